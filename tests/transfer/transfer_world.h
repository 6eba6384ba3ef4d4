// A small machine in memory to move files about on: the disk of "/" with the user's trash, and a second one at "/usb"
// with a trash of its own.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "support/memory_file_changes.h"
#include "support/memory_file_system.h"
#include "transfer/file_executor.h"
#include "transfer/undo.h"

namespace tresmor {

class FakeTrashPlaces final : public TrashPlaces {
 public:
  std::vector<TrashPlace> Places(const std::string& path) override { return path.starts_with("/usb/") ? usb : home; }
  std::vector<TrashPlace> home = {{"/home/me/Trash", ""}};
  std::vector<TrashPlace> usb = {{"/usb/.Trash-1", "/usb"}};
};

class ScriptedWatch final : public OperationWatch {
 public:
  bool Confirm(const ShFileOpStruct& /*operation*/, std::int64_t count) override {
    questions.push_back(count);
    return answer;
  }
  void Progress(const OperationProgress& progress) override { told.push_back(progress); }
  bool Cancelled() override { return cancelled && cancelled(); }

  bool answer = true;
  std::vector<std::int64_t> questions;
  std::vector<OperationProgress> told;
  std::function<bool()> cancelled;
};

using Paths = std::vector<std::string>;

inline std::string ListOf(const Paths& paths) {
  std::string list;
  for (const std::string& path : paths) list.append(path).push_back('\0');
  return list + '\0';
}

inline ShFileOpStruct TrashThese(const Paths& paths) {
  return {FO_DELETE, ListOf(paths), "", FOF_RENAMEONCOLLISION | FOF_ALLOWUNDO | FOF_NOCONFIRMATION, ""};
}
inline ShFileOpStruct DeleteThese(const Paths& paths) {
  return {FO_DELETE, ListOf(paths), "", FOF_RENAMEONCOLLISION | FOF_NOCONFIRMATION, ""};
}
inline ShFileOpStruct PutThese(std::uint32_t function, const Paths& paths, const std::string& folder) {
  return {function, ListOf(paths), folder, FOF_RENAMEONCOLLISION, folder};
}
inline ShFileOpStruct PutTheseAt(std::uint32_t function, const Paths& paths, const Paths& places,
                                 const std::string& destination) {
  return {function, ListOf(paths), ListOf(places), FOF_RENAMEONCOLLISION | FOF_MULTIDESTFILES, destination};
}

// What lasts when the program is started again: the files.
struct Disks {
  Disks() {
    for (const char* folder : {"/home/me/Trash/files", "/home/me/Trash/info", "/home/me/state", "/usb/.Trash-1/files",
                               "/usb/.Trash-1/info"}) {
      files.MakeFolder(folder);
    }
  }
  MemoryFileSystem files;
};

// One run of the program.
struct Program {
  explicit Program(Disks& disks)
      : files(disks.files),
        changes(files),
        log(files, changes, "/home/me/state/undo"),
        executor(files, changes, trash, log, [] { return std::int64_t{1'088'683'200}; }) {
    changes.SetDrive("/usb");
  }
  OperationResult Do(const ShFileOpStruct& operation) { return executor.ShFileOperation(operation, watch); }
  UndoResult Undone() { return Undo(files, changes, log).Run(watch); }

  MemoryFileSystem& files;
  MemoryFileChanges changes;
  FakeTrashPlaces trash;
  UndoLog log;
  ScriptedWatch watch;
  FileExecutor executor;
};

}  // namespace tresmor
