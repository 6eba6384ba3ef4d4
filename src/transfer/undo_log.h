// What the last step of operations moved or trashed, in a file of the program, so that it can be put back.
//
// The file holds records one behind the other, each of eight texts with a NUL behind each: "entry", "instead" or
// "never", the old place, the new one, the .trashinfo file (empty for a move), the kind ("file", "folder" or "other"),
// size, time of the last write, and "end". In front of those that are written at once stands one more NUL, so that half
// a record before them spoils none. It only grows while a step lasts.
//
// Several programs may write at once. A step begins only while no other program is at work; else what is written
// belongs to the step that is being written.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_changes.h"
#include "platform/file_system.h"
#include "transfer/trouble.h"

namespace tresmor {

// What is going to stand at `to`, unless that fails.
struct UndoEntry {
  std::string from;
  std::string to;
  std::string trashInfo;  // empty: it is moved, not trashed
  EntryKind kind = EntryKind::File;
  std::int64_t size = 0;
  std::int64_t modified = 0;
  friend bool operator==(const UndoEntry&, const UndoEntry&) = default;
};

struct UndoStep {
  std::vector<UndoEntry> entries;  // corrected, in the order of writing, without those that never went
  bool damaged = false;            // there was more, which can't be read
};

// One thread.
class UndoLog {
 public:
  // `path` is the file; its folder is made when it is needed. Empty: there is no place for it, and nothing can be
  // noted.
  UndoLog(const FileSystem& files, FileChanges& changes, std::string path)
      : files_(files), changes_(changes), path_(std::move(path)) {}

  const std::string& Path() const { return path_; }

  // What is written from here on is a new step. The old one is dropped when its first entries have been written.
  void Begin() { fresh_ = true; }
  // What is written from here on belongs to the old step.
  void GoOn() { fresh_ = false; }

  // Adds entries, before what they tell of is done. From then on nobody else begins a step or undoes, until Release.
  Trouble Write(std::span<const UndoEntry> entries);
  // The entry takes the place of the last one with the same `from`.
  Trouble Correct(const UndoEntry& entry);
  // These were written and have stayed where they were. If that can't be noted, undo finds it out for most of them.
  void Withdraw(std::span<const UndoEntry> entries);

  // For who undoes: nobody else writes or undoes until Release. FileNotFound: there is nothing to undo. PathAccess:
  // somebody is at work.
  Errors HoldAlone();
  // No failure where there is no file.
  Errors Read(UndoStep& step) const;
  // Leaves these of the last step and no others. It has to be held alone.
  Errors Keep(std::span<const UndoEntry> entries);

  void Release() { held_.reset(); }

  // Calls Release at its end, unless another one lives.
  class Use {
   public:
    explicit Use(UndoLog& log) : log_(log) { ++log_.uses_; }
    ~Use() {
      if (--log_.uses_ == 0) log_.Release();
    }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

   private:
    UndoLog& log_;
  };

 private:
  Errors Lock(Sharing sharing, std::unique_ptr<FileLock>& lock) const;
  Errors StartAnew(const std::string& records);
  Errors BeginStep(const std::string& records, bool& written);
  Trouble Add(const std::string& records);
  std::optional<FileIdentity> Identity() const;

  const FileSystem& files_;
  FileChanges& changes_;
  const std::string path_;
  std::unique_ptr<FileLock> held_;
  bool fresh_ = true;
  int uses_ = 0;
};

}  // namespace tresmor
