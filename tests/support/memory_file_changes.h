// Changes in a file system in memory, for tests: keeps to the contract of the port, records and numbers every call, and
// fails, changes things or crashes where a test says so.
//
// It knows what of its own work would outlive a crash of the machine: bytes that no Flush and names that no FlushFolder
// has waited for are lost then, while removals count at once, which is the worst that can happen. A rename happened
// or it didn't, whole, and is on the disk as soon as one of its two folders is.
//
// One thread at a time. No file system's limits are kept but those of MemoryFileSystem.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_changes.h"
#include "support/memory_file_system.h"

namespace tresmor {

// What is thrown at the crash that a test asked for; it is no std::exception, so that nobody takes it for a failure.
struct MemoryCrash {};

class MemoryFileChanges final : public FileChanges {
 public:
  enum class Op {
    MakeFolder,
    Create,
    Append,
    BeginCopy,
    CopyNext,
    TakeAttributes,
    Flush,
    CompareNext,
    SourceUnchanged,
    StandsAt,
    RemoveAbandoned,
    Rename,
    Replace,
    Remove,
    FlushFolder,
    Lock,
  };
  struct Call {
    Op op = Op::Rename;
    std::string path;  // that is changed; the new file of a FileCopy
    std::string from;  // of Rename, BeginCopy and what belongs to a FileCopy
    friend bool operator==(const Call&, const Call&) = default;
  };
  enum class Crash {
    OfProgram,          // what was done stays done
    OfMachine,          // names and bytes that weren't waited for are lost
    OfMachineKeepNames  // the bytes alone
  };

  explicit MemoryFileChanges(MemoryFileSystem& files) : files_(files) {}

  // The folder and what lies below it is a drive of its own.
  void SetDrive(const std::string& folder) { drives_.push_back(folder); }
  // So many more bytes find room. Not for Append, which writes to another disk.
  void SetRoom(std::int64_t bytes) { room_ = bytes; }
  // No name in this very folder can be made, changed or removed.
  void SetReadOnly(const std::string& folder) { readOnly_.insert(folder); }
  // Nothing in the folder and below it can be renamed without replacing, nor have a second name.
  void SetWithoutRename(const std::string& folder) { withoutRename_.push_back(folder); }
  // A step of a copy passes no more than that.
  void SetPiece(std::int64_t bytes) { piece_ = bytes; }

  // Calls count from 1. The call of this number fails and does nothing; SourceUnchanged says that it changed, StandsAt
  // that it doesn't.
  void FailAt(std::size_t number, Errors failure, bool atSource = false);
  // Every call of this kind on this path fails. Errors::None ends it.
  void Fail(Op op, const std::string& path, Errors failure) { failures_[{op, path}] = failure; }
  // The call of this number is the last one that does anything: MemoryCrash is thrown when it is done, and all that
  // comes later fails and changes nothing.
  void CrashAfter(std::size_t number, Crash crash);
  // Called before each call does its work; may change the file system.
  void SetHook(std::function<void(const Call&)> hook) { hook_ = std::move(hook); }

  const std::vector<Call>& Calls() const { return calls_; }
  std::size_t Count(Op op) const;

  Errors MakeFolder(const std::string& folder) override;
  Errors Create(const std::string& path, std::string_view bytes) override;
  Errors Append(const std::string& path, std::string_view bytes) override;
  std::unique_ptr<FileCopy> BeginCopy(const std::string& from, const std::string& to, Errors& failure,
                                      bool& atSource) override;
  Errors RemoveAbandoned(const std::string& path) override;
  Errors Rename(const std::string& from, const std::string& to) override;
  Errors Replace(const std::string& from, const std::string& to) override;
  Errors Remove(const std::string& path) override;
  Errors FlushFolder(const std::string& folder) override;
  std::unique_ptr<FileLock> Lock(const std::string& folder, Sharing sharing, Errors& failure) override;

 private:
  class Copy;
  class FolderLock;
  struct Injected {
    Errors failure = Errors::None;
    bool atSource = false;
  };
  // A name that isn't on the disk yet. Nothing in `from`: it is new.
  struct Name {
    std::uint64_t inode = 0;
    std::uint64_t folder = 0;
    std::uint64_t fromFolder = 0;
    std::string path;
    std::string from;
  };

  // Around each call: the first says how it is to fail, if at all; the second may crash.
  Injected Begin(Op op, const std::string& path, const std::string& from = {});
  void End();
  Errors Do(Op op, const std::string& path, const std::string& from, const std::function<Errors()>& work);

  Errors CheckFolderOf(const std::string& path) const;
  std::string DriveOf(const std::string& path) const;
  bool IsBelowAny(const std::vector<std::string>& folders, const std::string& path) const;
  bool TakeRoom(std::int64_t bytes);
  std::uint64_t InodeOf(const std::string& path) const;
  void NoteName(const std::string& path, const std::string& from, std::uint64_t fromFolder);
  void Commit(std::uint64_t folder);
  void Forget(std::uint64_t inode);
  Errors MakeNew(const std::string& path, EntryKind kind);
  Errors RemoveFile(const std::string& path);
  void LoseNames();
  void LoseBytes(const std::string& folder);

  MemoryFileSystem& files_;
  std::vector<std::string> drives_;
  std::vector<std::string> withoutRename_;
  std::set<std::uint64_t> copies_;    // that are being made
  std::map<std::string, int> locks_;  // how many hold one on a folder; kAlone for who holds it alone
  std::int64_t room_ = std::numeric_limits<std::int64_t>::max();
  std::int64_t piece_ = std::numeric_limits<std::int64_t>::max();
  std::set<std::string> readOnly_;
  std::map<std::size_t, Injected> failAt_;
  std::map<std::pair<Op, std::string>, Errors> failures_;
  std::size_t crashAfter_ = 0;
  Crash crash_ = Crash::OfProgram;
  bool crashed_ = false;
  std::function<void(const Call&)> hook_;
  std::vector<Call> calls_;
  std::vector<Name> names_;            // in the order in which they were given
  std::set<std::uint64_t> unflushed_;  // files with bytes that aren't on the disk
};

// All regular files with their bytes, by path.
std::map<std::string, std::string> AllFiles(const MemoryFileSystem& files, const std::string& folder = "/");

}  // namespace tresmor
