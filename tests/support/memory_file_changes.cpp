#include "support/memory_file_changes.h"

#include <algorithm>
#include <utility>

namespace tresmor {

namespace {

constexpr int kAlone = 1'000'000;
constexpr std::int64_t kBeyondTheEnd = 4096;  // that is asked for, since the file may have grown

std::string ReadAll(FileReader& reader) {
  std::string bytes(static_cast<std::size_t>(reader.Size()), '\0');
  bytes.resize(reader.ReadAt(0, bytes).got);
  return bytes;
}

bool SameFile(const FileStat& a, const FileStat& b) {
  return a.identity == b.identity && a.size == b.size && a.modified == b.modified && a.changedNs == b.changedNs;
}

}  // namespace

class MemoryFileChanges::Copy final : public FileCopy {
 public:
  Copy(MemoryFileChanges& changes, std::string from, std::string to, std::unique_ptr<FileReader> source,
       std::unique_ptr<FileReader> target)
      : changes_(changes),
        from_(std::move(from)),
        to_(std::move(to)),
        source_(std::move(source)),
        target_(std::move(target)),
        inode_(changes.InodeOf(to_)) {
    changes_.files_.Look(from_, opened_);
    changes_.copies_.insert(inode_);
  }
  ~Copy() override { changes_.copies_.erase(inode_); }

  Step CopyNext(std::int64_t most) override {
    return Stepped(Op::CopyNext, [&] {
      std::string piece;
      Step step = ReadSource(static_cast<std::int64_t>(written_.size()), most, piece);
      if (step.failure != Errors::None || piece.empty()) return step;
      if (!changes_.TakeRoom(step.bytes)) return Step{0, Errors::DiskFull, false};
      written_ += piece;
      changes_.files_.SetContent(to_, written_);
      changes_.unflushed_.insert(changes_.InodeOf(to_));
      return step;
    });
  }

  Errors TakeAttributes() override {
    return changes_.Do(Op::TakeAttributes, to_, from_, [&] {
      changes_.files_.SetModified(to_, opened_.modified);
      return Errors::None;
    });
  }

  Errors Flush() override {
    return changes_.Do(Op::Flush, to_, from_, [&] {
      changes_.unflushed_.erase(changes_.InodeOf(to_));
      return Errors::None;
    });
  }

  Step CompareNext(std::int64_t most) override {
    return Stepped(Op::CompareNext, [&] {
      std::string piece;
      Step step = ReadSource(compared_, most, piece);
      if (step.failure != Errors::None) return step;
      std::string other(piece.size(), '\0');
      const FileReader::Result result = target_->ReadAt(compared_, other);
      other.resize(result.got);
      if (result.failure != Errors::None || other != piece) return Step{0, Errors::Device, false};
      compared_ += step.bytes;
      return step;
    });
  }

  bool SourceUnchanged() const override {
    const Injected injected = changes_.Begin(Op::SourceUnchanged, to_, from_);
    FileStat now;
    const bool same =
        injected.failure == Errors::None && changes_.files_.Look(from_, now) == Errors::None && SameFile(now, opened_);
    changes_.End();
    return same;
  }

  bool StandsAt(const std::string& path) const override {
    const Injected injected = changes_.Begin(Op::StandsAt, path, from_);
    const bool stands = injected.failure == Errors::None && changes_.InodeOf(path) == inode_;
    changes_.End();
    return stands;
  }

 private:
  Step ReadSource(std::int64_t offset, std::int64_t most, std::string& piece) const {
    const std::int64_t left = std::max<std::int64_t>(0, opened_.size - offset);
    piece.resize(static_cast<std::size_t>(std::min({most, changes_.piece_, std::max(left, kBeyondTheEnd)})));
    const FileReader::Result result = source_->ReadAt(offset, piece);
    piece.resize(result.got);
    if (result.failure != Errors::None) return {0, result.failure, true};
    return {static_cast<std::int64_t>(result.got), Errors::None, false};
  }

  template <class Work>
  Step Stepped(Op op, Work&& work) {
    const Injected injected = changes_.Begin(op, to_, from_);
    const Step step = injected.failure == Errors::None ? work() : Step{0, injected.failure, injected.atSource};
    changes_.End();
    return step;
  }

  MemoryFileChanges& changes_;
  const std::string from_;
  const std::string to_;
  const std::unique_ptr<FileReader> source_;
  const std::unique_ptr<FileReader> target_;
  const std::uint64_t inode_;
  FileStat opened_;
  std::string written_;
  std::int64_t compared_ = 0;
};

class MemoryFileChanges::FolderLock final : public FileLock {
 public:
  FolderLock(std::map<std::string, int>& locks, const std::string& folder, int holders)
      : locks_(locks), folder_(folder) {
    locks_[folder_] += holders;
  }
  ~FolderLock() override { locks_[folder_] = locks_[folder_] == kAlone ? 0 : locks_[folder_] - 1; }

 private:
  std::map<std::string, int>& locks_;
  const std::string folder_;
};

// --- Failing and crashing

void MemoryFileChanges::FailAt(std::size_t number, Errors failure, bool atSource) {
  failAt_[number] = {failure, atSource};
}

void MemoryFileChanges::CrashAfter(std::size_t number, Crash crash) {
  crashAfter_ = number;
  crash_ = crash;
}

std::size_t MemoryFileChanges::Count(Op op) const {
  return static_cast<std::size_t>(std::ranges::count(calls_, op, &Call::op));
}

MemoryFileChanges::Injected MemoryFileChanges::Begin(Op op, const std::string& path, const std::string& from) {
  if (crashed_) return {Errors::Device, false};
  calls_.push_back({op, path, from});
  if (hook_) hook_(calls_.back());
  if (const auto numbered = failAt_.find(calls_.size()); numbered != failAt_.end()) return numbered->second;
  const auto told = failures_.find({op, path});
  return told == failures_.end() ? Injected{} : Injected{told->second, false};
}

void MemoryFileChanges::End() {
  if (crashed_ || crashAfter_ == 0 || calls_.size() != crashAfter_) return;
  crashed_ = true;
  if (crash_ != Crash::OfProgram) LoseBytes("/");
  if (crash_ == Crash::OfMachine) LoseNames();
  throw MemoryCrash();
}

Errors MemoryFileChanges::Do(Op op, const std::string& path, const std::string& from,
                             const std::function<Errors()>& work) {
  Errors failure = Begin(op, path, from).failure;
  if (failure == Errors::None) failure = work();
  End();
  return failure;
}

// --- What is on the disk

std::uint64_t MemoryFileChanges::InodeOf(const std::string& path) const {
  FileStat stat;
  return files_.Look(path, stat) == Errors::None ? stat.identity.inode : 0;
}

void MemoryFileChanges::NoteName(const std::string& path, const std::string& from, std::uint64_t fromFolder) {
  const std::uint64_t folder = InodeOf(std::string(GetFolderOf(path, files_.Style())));
  names_.push_back({InodeOf(path), folder, fromFolder, path, from});
}

void MemoryFileChanges::Forget(std::uint64_t inode) {
  std::erase_if(names_, [inode](const Name& name) { return name.inode == inode; });
}

void MemoryFileChanges::Commit(std::uint64_t folder) {
  const auto isNew = [folder](const Name& name) { return name.inode == folder; };
  if (std::ranges::any_of(names_, isNew)) return;  // what stands in a folder that is lost is lost with it
  std::map<std::uint64_t, bool> last;
  for (const Name& name : names_) last[name.inode] = name.folder == folder || name.fromFolder == folder;
  for (const auto& [inode, here] : last) {
    if (here) Forget(inode);
  }
}

void MemoryFileChanges::LoseNames() {
  for (auto name = names_.rbegin(); name != names_.rend(); ++name) {
    if (InodeOf(name->path) != name->inode) continue;
    if (name->from.empty()) {
      files_.Remove(name->path);
    } else {
      files_.Move(name->path, name->from);
    }
  }
}

void MemoryFileChanges::LoseBytes(const std::string& folder) {
  for (const auto& [path, bytes] : AllFiles(files_, folder)) {
    if (unflushed_.contains(InodeOf(path))) files_.SetContent(path, "");
  }
}

// --- The port

Errors MemoryFileChanges::CheckFolderOf(const std::string& path) const {
  std::string folder(GetFolderOf(path, files_.Style()));
  if (folder.size() > 1) folder.pop_back();
  return readOnly_.contains(folder) ? Errors::PermissionDenied : Errors::None;
}

std::string MemoryFileChanges::DriveOf(const std::string& path) const {
  std::string drive;
  for (const std::string& folder : drives_) {
    const bool below = files_.Style().StartsWith(path, AddTail(folder, files_.Style().Tail()));
    if (below && folder.size() > drive.size()) drive = folder;
  }
  return drive;
}

bool MemoryFileChanges::IsBelowAny(const std::vector<std::string>& folders, const std::string& path) const {
  return std::ranges::any_of(folders,
                             [&](const std::string& folder) { return LiesBelow(path, folder, files_.Style()); });
}

bool MemoryFileChanges::TakeRoom(std::int64_t bytes) {
  if (bytes > room_) return false;
  room_ -= bytes;
  return true;
}

Errors MemoryFileChanges::MakeNew(const std::string& path, EntryKind kind) {
  Errors failure = CheckFolderOf(path);
  if (failure == Errors::None) failure = files_.Add(path, kind);
  if (failure == Errors::None) NoteName(path, {}, 0);
  return failure;
}

Errors MemoryFileChanges::MakeFolder(const std::string& folder) {
  return Do(Op::MakeFolder, folder, {}, [&] { return MakeNew(folder, EntryKind::Folder); });
}

Errors MemoryFileChanges::Create(const std::string& path, std::string_view bytes) {
  return Do(Op::Create, path, {}, [&] {
    FileStat stat;
    if (files_.Look(path, stat) == Errors::None) return Errors::FileExists;
    if (!TakeRoom(static_cast<std::int64_t>(bytes.size()))) return Errors::DiskFull;
    const Errors failure = MakeNew(path, EntryKind::File);
    if (failure != Errors::None) return failure;
    files_.SetContent(path, std::string(bytes));
    unflushed_.insert(InodeOf(path));
    return Errors::None;
  });
}

Errors MemoryFileChanges::Append(const std::string& path, std::string_view bytes) {
  return Do(Op::Append, path, {}, [&] {
    FileStat stat;
    Errors failure = files_.Look(path, stat);
    if (failure == Errors::FileNotFound) failure = MakeNew(path, EntryKind::File);
    if (failure != Errors::None) return failure;
    const auto reader = files_.Open(path, failure);
    if (!reader) return failure;
    files_.SetContent(path, ReadAll(*reader).append(bytes));
    unflushed_.insert(InodeOf(path));
    return Errors::None;
  });
}

std::unique_ptr<FileCopy> MemoryFileChanges::BeginCopy(const std::string& from, const std::string& to, Errors& failure,
                                                       bool& atSource) {
  const Injected injected = Begin(Op::BeginCopy, to, from);
  failure = injected.failure;
  atSource = injected.atSource;
  std::unique_ptr<FileCopy> copy;
  if (failure == Errors::None) {
    auto source = files_.Open(from, failure);
    atSource = failure != Errors::None;
    if (!atSource) failure = MakeNew(to, EntryKind::File);
    if (failure == Errors::None) {
      unflushed_.insert(InodeOf(to));
      copy = std::make_unique<Copy>(*this, from, to, std::move(source), files_.Open(to, failure));
    }
  }
  End();
  return copy;
}

Errors MemoryFileChanges::Rename(const std::string& from, const std::string& to) {
  return Do(Op::Rename, to, from, [&] {
    const std::uint64_t fromFolder = InodeOf(std::string(GetFolderOf(from, files_.Style())));
    FileStat stat;
    Errors failure = files_.Look(from, stat);
    if (failure == Errors::None && DriveOf(from) != DriveOf(to)) failure = Errors::DifferentDrive;
    FileStat taken;
    if (failure == Errors::None && IsBelowAny(withoutRename_, to)) {
      failure = files_.Look(to, taken) == Errors::None ? Errors::FileExists : Errors::DifferentDrive;
    }
    if (failure == Errors::None) failure = CheckFolderOf(from);
    if (failure == Errors::None) failure = CheckFolderOf(to);
    if (failure == Errors::None) failure = files_.Move(from, to);
    if (failure == Errors::None) NoteName(to, from, fromFolder);
    return failure;
  });
}

Errors MemoryFileChanges::Replace(const std::string& from, const std::string& to) {
  return Do(Op::Replace, to, from, [&] {
    const std::uint64_t fromFolder = InodeOf(std::string(GetFolderOf(from, files_.Style())));
    FileStat stat;
    Errors failure = files_.Look(from, stat);
    if (failure == Errors::None && files_.Look(to, stat) == Errors::None) failure = RemoveFile(to);
    if (failure == Errors::None) failure = files_.Move(from, to);
    if (failure == Errors::None) NoteName(to, from, fromFolder);
    return failure;
  });
}

Errors MemoryFileChanges::RemoveFile(const std::string& path) {
  FileStat stat;
  Errors failure = files_.Look(path, stat);
  if (failure == Errors::None && stat.kind == EntryKind::Folder) failure = Errors::PathAccess;
  if (failure == Errors::None) failure = CheckFolderOf(path);
  if (failure == Errors::None) failure = files_.Drop(path);
  if (failure == Errors::None && stat.links == 1) Forget(stat.identity.inode);
  return failure;
}

Errors MemoryFileChanges::Remove(const std::string& path) {
  return Do(Op::Remove, path, {}, [&] { return RemoveFile(path); });
}

Errors MemoryFileChanges::RemoveAbandoned(const std::string& path) {
  return Do(Op::RemoveAbandoned, path, {}, [&] {
    FileStat stat;
    const Errors failure = files_.Look(path, stat);
    if (failure != Errors::None) return failure;
    const bool abandoned = stat.kind == EntryKind::File && !copies_.contains(stat.identity.inode);
    return abandoned ? RemoveFile(path) : Errors::PathAccess;
  });
}

std::unique_ptr<FileLock> MemoryFileChanges::Lock(const std::string& folder, Sharing sharing, Errors& failure) {
  const int most = sharing == Sharing::Alone ? 0 : kAlone - 1;
  failure = Do(Op::Lock, folder, {}, [&] {
    FileStat stat;
    const Errors found = files_.Look(AddTail(folder, files_.Style().Tail()), stat);
    if (found != Errors::None) return found;
    return locks_[folder] > most ? Errors::PathAccess : Errors::None;
  });
  if (failure != Errors::None) return nullptr;
  return std::make_unique<FolderLock>(locks_, folder, sharing == Sharing::Alone ? kAlone : 1);
}

Errors MemoryFileChanges::FlushFolder(const std::string& folder) {
  return Do(Op::FlushFolder, folder, {}, [&] {
    FileStat stat;
    const Errors failure = files_.Look(AddTail(folder, files_.Style().Tail()), stat);
    if (failure == Errors::None) Commit(stat.identity.inode);
    return failure;
  });
}

std::map<std::string, std::string> AllFiles(const MemoryFileSystem& files, const std::string& folder) {
  std::map<std::string, std::string> all;
  FolderListing listing;
  files.List(folder, listing);
  for (const FolderListing::Entry& entry : listing.entries) {
    const std::string path = AddTail(folder, files.Style().Tail()).append(listing.Name(entry));
    if (entry.kind == EntryKind::Folder) all.merge(AllFiles(files, path));
    Errors failure = Errors::None;
    if (entry.kind != EntryKind::File) continue;
    if (const auto reader = files.Open(path, failure)) all[path] = ReadAll(*reader);
  }
  return all;
}

}  // namespace tresmor
