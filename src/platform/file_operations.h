// The port to operations on many files: the record, its flags and results have the names and values that the desktop
// program this one grew from knew them by.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace tresmor {

enum : std::uint32_t {
  FO_MOVE = 1,
  FO_COPY = 2,
  FO_DELETE = 3,
  FO_RENAME = 4,  // a move that belongs to no step that can be undone
};

enum : std::uint16_t {
  FOF_MULTIDESTFILES = 0x0001,     // pTo has a full path for each of pFrom
  FOF_RENAMEONCOLLISION = 0x0008,  // where a name is taken the newcomer becomes "name (2).ext"
  FOF_NOCONFIRMATION = 0x0010,     // no question before a delete
  FOF_ALLOWUNDO = 0x0040,          // a delete moves to the trash
};

struct ShFileOpStruct {
  std::uint32_t wFunc = 0;
  std::string pFrom;  // full paths, a NUL behind each, and one more NUL at the end
  std::string pTo;    // empty for a delete; else a folder, or paths in the form of pFrom
  std::uint16_t fFlags = 0;
  // The folder that the user chose for pTo, which is it or lies below it. Links below it are not entered.
  std::string destination;
};

// The numbers are part of messages and never change.
enum class OperationCode : int {
  Done = 0,
  NotFound = 2,
  Denied = 5,
  WriteFault = 29,
  ReadFault = 30,
  DiskFull = 112,
  SameFile = 113,  // a file onto itself, a folder into itself, what lies in the trash into it
  BadName = 123,   // no path, or one that the file system doesn't take
  Exists = 183,    // something else has the name
  TooLarge = 223,  // for the file system of the destination
  NoTrash = 1105,  // there is no trash folder that it could be moved to
  Changed = 1106,  // the source changed meanwhile
  Cancelled = 1223,
};

struct OperationResult {
  OperationCode code = OperationCode::Done;
  std::string description;  // names the first path that failed and why; empty when done
};

struct OperationProgress {
  std::int64_t files = 0;  // that are done
  std::int64_t allFiles = 0;
  std::int64_t bytes = 0;  // that were copied or given another place
  std::int64_t allBytes = 0;
  std::string path;  // that is being worked on
};

// Who started an operation. Called on the operation's thread.
class OperationWatch {
 public:
  virtual ~OperationWatch() = default;
  // Whether to go on with a delete of so many files and folders; not asked with FOF_NOCONFIRMATION.
  virtual bool Confirm(const ShFileOpStruct& operation, std::int64_t count) = 0;
  // Many times a second while long files are copied, and at least once a file.
  virtual void Progress(const OperationProgress& progress) = 0;
  // Asked often: between files, between pieces of long ones, and before another name is tried.
  virtual bool Cancelled() = 0;
};

// What a user asked for, from the first operation to the last.
class OpenUndoStep {
 public:
  virtual ~OpenUndoStep() = default;
};

class FileOperations {
 public:
  virtual ~FileOperations() = default;
  // What is done from here to the next call is undone as one. What goes to the trash after a delete for good is undone
  // with the step before, which the delete doesn't touch. While the result lives no other program begins a step in
  // between or undoes, once something was done that can be undone; and folders at a destination that one operation
  // used have to be the same for the next, or that fails. One at a time, and it goes before this does.
  [[nodiscard]] virtual std::unique_ptr<OpenUndoStep> BeginUndoStep() = 0;

  // Does it and returns when it is over, on any thread but one operation at a time. A path that fails is left as it
  // was, and the others are still done; the result is that of the first that failed, or Cancelled if a cancel left any
  // untried. A path that stands there twice, or went with its folder before, is done once and is no failure. Missing
  // folders at the destination are made. A source is removed only when its copy is complete and on the disk.
  //
  // What was replaced after it was looked at is left alone (Changed), as its identity tells. File systems that make
  // inode numbers up as they go may give a file another one meanwhile: there it is left alone though it is the same,
  // and the next try may do it.
  virtual OperationResult ShFileOperation(const ShFileOpStruct& operation, OperationWatch& watch) = 0;
};

}  // namespace tresmor
