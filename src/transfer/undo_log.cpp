#include "transfer/undo_log.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <unordered_map>
#include <utility>

#include "base/path.h"
#include "transfer/destination.h"

namespace tresmor {

namespace {

constexpr std::array<std::string_view, 3> kWhats = {"entry", "instead", "never"};  // in the order of What
constexpr std::string_view kEnd = "end";
constexpr std::array<std::string_view, 3> kKinds = {"file", "folder", "other"};  // in the order of EntryKind
constexpr std::size_t kTexts = 8;

enum class What : std::uint8_t { Entry, Instead, Never };

void AddRecord(std::string& records, What what, const UndoEntry& entry) {
  const std::string size = std::to_string(entry.size);
  const std::string modified = std::to_string(entry.modified);
  const std::array<std::string_view, kTexts> texts = {
      kWhats[static_cast<std::size_t>(what)],       entry.from, entry.to, entry.trashInfo,
      kKinds[static_cast<std::size_t>(entry.kind)], size,       modified, kEnd};
  for (const std::string_view text : texts) records.append(text).push_back('\0');
}

// What is written at once.
std::string Records(What what, std::span<const UndoEntry> entries) {
  std::string records(1, '\0');
  for (const UndoEntry& entry : entries) AddRecord(records, what, entry);
  return records;
}

bool ParseNumber(std::string_view text, std::int64_t& number) {
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
  return failure == std::errc() && end == text.data() + text.size();
}

struct Record {
  What what = What::Entry;
  UndoEntry entry;
};

// Takes the next text off the front of `bytes`.
std::optional<std::string_view> NextText(std::string_view& bytes) {
  const std::size_t end = bytes.find('\0');
  if (end == bytes.npos) return std::nullopt;
  const std::string_view text = bytes.substr(0, end);
  bytes.remove_prefix(end + 1);
  return text;
}

// The value that has the name at the same place of a list.
template <class Value, std::size_t count>
bool FindIn(const std::array<std::string_view, count>& names, std::string_view name, Value& value) {
  const auto found = std::ranges::find(names, name);
  value = static_cast<Value>(found - names.begin());
  return found != names.end();
}

// Takes a record off the front of `bytes`, if one stands there.
std::optional<Record> NextRecord(std::string_view& bytes) {
  std::array<std::string_view, kTexts> texts;
  std::string_view rest = bytes;
  for (std::string_view& text : texts) {
    const auto next = NextText(rest);
    if (!next) return std::nullopt;
    text = *next;
  }
  Record record;
  UndoEntry& entry = record.entry;
  entry.from = texts[1];
  entry.to = texts[2];
  entry.trashInfo = texts[3];
  const bool right = FindIn(kWhats, texts[0], record.what) && !entry.from.empty() && !entry.to.empty() &&
                     FindIn(kKinds, texts[4], entry.kind) && ParseNumber(texts[5], entry.size) &&
                     ParseNumber(texts[6], entry.modified) && texts[7] == kEnd;
  if (!right) return std::nullopt;
  bytes = rest;
  return record;
}

// Makes a step of its records.
class StepReader {
 public:
  explicit StepReader(UndoStep& step) : step_(step) {}

  void Read(std::string_view bytes) {
    bool between = false;  // behind the NUL in front of records
    while (!bytes.empty()) {
      if (auto record = NextRecord(bytes)) {
        Take(std::move(*record));
        between = false;
        continue;
      }
      const auto text = NextText(bytes);
      step_.damaged = step_.damaged || between || !text || !text->empty();
      between = true;
      if (!text) break;
    }
    std::erase_if(step_.entries, [](const UndoEntry& entry) { return entry.from.empty(); });
  }

 private:
  void Take(Record record) {
    const auto [known, isNew] = last_.try_emplace(record.entry.from, step_.entries.size());
    if (record.what == What::Never) {
      if (!isNew) step_.entries[known->second].from.clear();
      last_.erase(known);
    } else if (record.what == What::Instead && !isNew) {
      step_.entries[known->second] = std::move(record.entry);
    } else {
      known->second = step_.entries.size();
      step_.entries.push_back(std::move(record.entry));
    }
  }

  UndoStep& step_;
  std::unordered_map<std::string, std::size_t> last_;
};

// The trouble may be with another disk than the file's, so what it is about has to be told.
Trouble NotNoted(const Trouble& trouble) {
  if (!trouble) return {};
  return {trouble.code, "how to undo it can't be noted, as " + trouble.reason};
}

Errors ReadBytes(FileReader& reader, std::string& bytes) {
  bytes.resize(static_cast<std::size_t>(reader.Size()));
  const FileReader::Result result = reader.ReadAt(0, bytes);
  bytes.resize(result.got);
  return result.failure;
}

}  // namespace

std::optional<FileIdentity> UndoLog::Identity() const {
  FileStat stat;
  return files_.Stat(path_, stat) == Errors::None ? std::optional(stat.identity) : std::nullopt;
}

Errors UndoLog::Lock(Sharing sharing, std::unique_ptr<FileLock>& lock) const {
  Errors failure = Errors::None;
  lock = changes_.Lock(ParentOf(path_, files_.Style()), sharing, failure);
  return failure;
}

// The new step is written beside the old one and takes its place in one go.
Errors UndoLog::StartAnew(const std::string& records) {
  const std::string next = path_ + ".new";
  Errors failure = changes_.Remove(next);
  if (failure == Errors::None || failure == Errors::FileNotFound) failure = changes_.Append(next, records);
  return failure == Errors::None ? changes_.Replace(next, path_) : failure;
}

// A lock can't be given up in part without a moment in which others get one, so whoever began a step looks afterwards
// if it is still there.
Errors UndoLog::BeginStep(const std::string& records, bool& written) {
  std::unique_ptr<FileLock> alone;
  Errors failure = Lock(Sharing::Alone, alone);
  if (failure == Errors::PathAccess) return Lock(Sharing::Shared, held_);
  if (failure == Errors::None) failure = StartAnew(records);
  if (failure != Errors::None) return failure;
  const auto begun = Identity();
  alone.reset();
  failure = Lock(Sharing::Shared, held_);
  written = begun && Identity() == begun;
  return failure;
}

Trouble UndoLog::Add(const std::string& records) {
  if (path_.empty()) return {OperationCode::Denied, "there is no home folder to note in how it can be undone"};
  bool written = false;
  if (!held_) {
    if (const Trouble trouble = Destination(files_, changes_).Enter(ParentOf(path_, files_.Style()))) {
      return NotNoted(trouble);
    }
    const Errors failure = fresh_ ? BeginStep(records, written) : Lock(Sharing::Shared, held_);
    if (failure == Errors::PathAccess) return {OperationCode::Denied, "files are being put back just now"};
    if (failure != Errors::None) return NotNoted(TargetTrouble(failure, path_));
  }
  fresh_ = false;
  return written ? Trouble{} : NotNoted(TargetTrouble(changes_.Append(path_, records), path_));
}

Trouble UndoLog::Write(std::span<const UndoEntry> entries) {
  return entries.empty() ? Trouble{} : Add(Records(What::Entry, entries));
}

Trouble UndoLog::Correct(const UndoEntry& entry) { return Add(Records(What::Instead, {&entry, 1})); }

void UndoLog::Withdraw(std::span<const UndoEntry> entries) {
  if (!entries.empty()) Add(Records(What::Never, entries));
}

Errors UndoLog::HoldAlone() { return path_.empty() ? Errors::FileNotFound : Lock(Sharing::Alone, held_); }

Errors UndoLog::Read(UndoStep& step) const {
  step = {};
  Errors failure = Errors::None;
  const auto reader = files_.Open(path_, failure);
  if (!reader) return failure == Errors::FileNotFound ? Errors::None : failure;
  std::string bytes;
  failure = ReadBytes(*reader, bytes);
  if (failure == Errors::None) StepReader(step).Read(bytes);
  return failure;
}

Errors UndoLog::Keep(std::span<const UndoEntry> entries) {
  if (!entries.empty()) return StartAnew(Records(What::Entry, entries));
  const Errors failure = changes_.Remove(path_);
  return failure == Errors::FileNotFound ? Errors::None : failure;
}

}  // namespace tresmor
