#include "soak/changer.h"

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>
#include <vector>

#include "base/path.h"
#include "soak/places.h"

namespace tresmor::soak {

namespace {

using Op = MemoryFileChanges::Op;

constexpr std::array kFailures = {Errors::PermissionDenied, Errors::Device, Errors::FileNotFound, Errors::DiskFull};
constexpr const char* kNames[] = {"a.txt", "b.jpg", "c.exe", "A.TXT", "long name.bak", "odd\nname\xff", "-", "&amp;"};
// What a look or a change in an operation's own time may be followed by at once is none of these.
constexpr Op kMoments[] = {Op::MakeFolder, Op::BeginCopy,   Op::CopyNext,        Op::TakeAttributes,
                           Op::Flush,      Op::CompareNext, Op::SourceUnchanged, Op::Rename};
constexpr std::size_t kPortion = 120'000;

// What comes of a step for which there is no room any more, since somebody else was quicker, is nothing.
template <class Step>
bool Tried(Step&& step) {
  try {
    step();
    return true;
  } catch (const std::logic_error&) {
    return false;
  }
}

// All that stands below `folder` in a listing of it.
std::vector<std::string> Entries(const MemoryFileSystem& files, const std::string& folder, EntryKind kind) {
  FolderListing listing;
  files.List(folder, listing);
  std::vector<std::string> paths;
  for (const FolderListing::Entry& entry : listing.entries) {
    if (entry.kind == kind) paths.push_back(AddTail(folder, "/").append(listing.Name(entry)));
  }
  return paths;
}

}  // namespace

Changer::Changer(MemoryFileSystem& files, MemoryFileChanges& changes, Ledger& ledger, std::uint64_t seed)
    : files_(files), changes_(changes), ledger_(ledger), dice_(seed) {
  files_.SetHook([this](const MemoryFileSystem::Call&) { OnLook(); });
  changes_.SetHook([this](const MemoryFileChanges::Call& call) { OnChange(call); });
}

Changer::~Changer() {
  files_.SetHook(nullptr);
  changes_.SetHook(nullptr);
}

void Changer::Fill() {
  for (const char* const folder : kDataFolders) files_.MakeFolder(folder);
  for (int i = 0; i < 40; ++i) Appear();
  const std::string long1 = NewContent() + std::string(kPortion, 'p');
  Tried([&] { files_.MakeFile("/data/whole.avi", long1); });
  Tried([&] { files_.MakeFile("/data/b/part.avi", long1.substr(0, kPortion - 10'000)); });
  files_.MakeLink("/data/link", "/data/a");
  files_.MakeLink("/data/a/circle", "/data");
  files_.MakeFifo("/data/b/fifo");
}

// A look runs on any thread of a search, and this call is made by the changer itself too.
void Changer::OnLook() {
  if (!active_ || operating_) return;
  const std::unique_lock lock(mutex_, std::try_to_lock);
  if (!lock || !dice_.OneIn(60)) return;
  active_ = false;
  Change();
  active_ = true;
}

void Changer::OnChange(const MemoryFileChanges::Call& call) {
  if (!active_) return;
  const std::lock_guard lock(mutex_);
  if (std::ranges::find(kMoments, call.op) == std::end(kMoments) || !dice_.OneIn(12)) return;
  active_ = false;
  if (!call.from.empty() && dice_.OneIn(2)) {
    Rewrite(call.from);  // what the operation is about
  } else {
    Change();
  }
  active_ = true;
}

void Changer::ChangeAtRest() {
  const std::lock_guard lock(mutex_);
  for (std::size_t left = 1 + dice_.Below(6); left > 0; --left) Change();
}

void Changer::Change() {
  ++done_;
  switch (dice_.Below(5)) {
    case 0:
      return Vanish();
    case 1:
      return Rewrite(AnyFile());
    default:
      return Appear();
  }
}

std::string Changer::NewContent() {
  const std::size_t size = dice_.Below(300);
  return "content " + std::to_string(++contents_) + " " + std::string(size, 'x');
}

// Half of them are empty or equal to a file that is there.
void Changer::Appear() {
  const std::string path = std::string(dice_.Pick(kDataFolders)) + "/" + (dice_.OneIn(8) ? "." : "") +
                           dice_.Pick(kNames) + (dice_.OneIn(2) ? "" : std::to_string(dice_.Below(30)));
  std::string content = dice_.OneIn(10) ? "" : NewContent();
  if (const auto other = AnyFile(); other && dice_.OneIn(2)) content = ContentOf(*other).value_or(content);
  ledger_.Made(path, content);
  if (!Tried([&] { files_.MakeFile(path, content); })) ledger_.LetGo(content);
}

void Changer::Vanish() {
  const auto path = AnyFile();
  const auto content = path ? ContentOf(*path) : std::nullopt;
  if (!content) return;
  if (Tried([&] { files_.Remove(*path); })) ledger_.LetGo(*content);
}

void Changer::Rewrite(const std::optional<std::string>& path) {
  const auto content = path ? ContentOf(*path) : std::nullopt;
  if (!content) return;
  const std::string other = dice_.OneIn(2) ? *content + " and more" : NewContent();
  ledger_.Made(*path, other);
  ledger_.LetGo(Tried([&] { files_.SetContent(*path, other); }) ? *content : other);
}

std::optional<std::string> Changer::AnyFile() {
  auto paths = Entries(files_, dice_.Pick(kDataFolders), EntryKind::File);
  // The ledger leaves out copies that the program has begun.
  std::erase_if(paths, [](const std::string& path) { return path.find("/.tresmor-") != path.npos; });
  if (paths.empty()) return std::nullopt;
  return dice_.Pick(paths);
}

// None where it can't be read as a whole.
std::optional<std::string> Changer::ContentOf(const std::string& path) const {
  Errors failure = Errors::None;
  const auto reader = files_.Open(path, failure);
  if (!reader) return std::nullopt;
  std::string bytes(static_cast<std::size_t>(reader->Size()), '\0');
  const auto read = reader->ReadAt(0, bytes);
  if (read.failure != Errors::None || read.got != bytes.size()) return std::nullopt;
  return bytes;
}

void Changer::LetFail() {
  const std::lock_guard lock(mutex_);
  const Errors failure = dice_.Pick(kFailures);
  const std::string folder = dice_.Pick(kDataFolders);
  const std::string file = AnyFile().value_or(folder);
  Tried([&] {
    switch (dice_.Below(7)) {
      case 0:
        return files_.FailOpen(file, failure);
      case 1:
        return files_.FailStat(file, failure);
      case 2:
        return files_.FailRead(file, static_cast<std::int64_t>(dice_.Below(100)), failure);
      case 3:
        return files_.FailList(folder, failure, dice_.Below(4));
      case 4:
        return files_.SetUnreadable(folder);
      case 5:
        return changes_.SetRoom(static_cast<std::int64_t>(dice_.Below(2'000)));
      default:
        return changes_.FailAt(changes_.Calls().size() + 1 + dice_.Below(40), failure, dice_.OneIn(2));
    }
  });
}

void Changer::Heal(const std::string& folder) {
  changes_.SetRoom(std::numeric_limits<std::int64_t>::max());
  files_.SetUnreadable(folder, false);
  files_.FailList(folder, Errors::None);
  files_.FailStat(folder, Errors::None);
  for (const std::string& file : Entries(files_, folder, EntryKind::File)) {
    files_.FailOpen(file, Errors::None);
    files_.FailStat(file, Errors::None);
    files_.FailRead(file, 0, Errors::None);
    files_.SetUnreadable(file, false);
  }
  for (const std::string& below : Entries(files_, folder, EntryKind::Folder)) Heal(below);
}

}  // namespace tresmor::soak
