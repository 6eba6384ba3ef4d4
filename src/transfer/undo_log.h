// What the last step of operations moved or trashed, in a file of the program, so that it can be put back.
//
// The file holds records one behind the other, each of eight texts with a NUL behind each: "entry" or "instead", the
// old place, the new one, the .trashinfo file (empty for a move), the kind ("file", "folder" or "other"), size, time of
// the last write, and an empty one. It only grows while a step lasts. What comes behind a record that can't be read
// isn't believed.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_changes.h"
#include "platform/file_system.h"

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

// One thread.
class UndoLog {
 public:
  // `path` is the file; its folder is made when it is needed.
  UndoLog(const FileSystem& files, FileChanges& changes, std::string path)
      : files_(files), changes_(changes), path_(std::move(path)) {}

  const std::string& Path() const { return path_; }

  // What is written from here on is a new step. The old one is dropped when its first entries have been written.
  void Begin() { fresh_ = true; }

  // Adds entries, before what they tell of is done.
  Errors Write(std::span<const UndoEntry> entries);
  // The entry takes the place of the last one with the same `from`.
  Errors Correct(const UndoEntry& entry);

  // The entries of the last step, corrected, in the order of writing; none if there is no file.
  Errors Read(std::vector<UndoEntry>& entries) const;
  // Leaves these of the last step and no others.
  Errors Keep(std::span<const UndoEntry> entries);

 private:
  Errors Add(const std::string& records);
  Errors Append(const std::string& path, const std::string& records);
  Errors StartAnew(const std::string& records);

  const FileSystem& files_;
  FileChanges& changes_;
  const std::string path_;
  bool fresh_ = true;
};

}  // namespace tresmor
