// A small machine in memory to move files about on: the disk of "/" with the user's trash, and a second one at "/usb"
// with a trash of its own.
#pragma once

#include <functional>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "support/memory_file_changes.h"
#include "support/memory_file_system.h"
#include "transfer/file_executor.h"
#include "transfer/undo.h"

namespace tresmor {

class FakeTrashPlaces final : public TrashPlaces {
 public:
  std::vector<TrashPlace> Places(const std::string& path, TrashFailure& why) override {
    why = failure;
    if (++asked == missingAt) return {};
    return path.starts_with("/usb/") ? usb : home;
  }
  std::size_t asked = 0;
  std::size_t missingAt = 0;  // the question of this number, from 1 on, finds none
  TrashFailure failure;       // why it is that there is none
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

// A file system of which any one look can fail: at a path, into a folder, at a file or its bytes.
class FailingLooks final : public FileSystem {
 public:
  explicit FailingLooks(const FileSystem& files) : files_(files) {}

  // Looks count from 1.
  void FailAt(std::size_t number) { failAt_ = number; }
  std::size_t Count() const { return count_; }

  PathStyle Style() const override { return files_.Style(); }
  Errors List(const std::string& folder, FolderListing& listing) const override {
    return Fails() ? Errors::Device : files_.List(folder, listing);
  }
  Errors Stat(const std::string& path, FileStat& stat) const override {
    return Fails() ? Errors::Device : files_.Stat(path, stat);
  }
  std::unique_ptr<FileReader> Open(const std::string& path, Errors& failure) const override {
    failure = Errors::Device;
    auto reader = Fails() ? nullptr : files_.Open(path, failure);
    return reader ? std::make_unique<Reader>(*this, std::move(reader)) : nullptr;
  }
  std::unique_ptr<Folder> OpenFolder(const std::string& folder, Errors& failure) const override {
    failure = Errors::Device;
    return Fails() ? nullptr : files_.OpenFolder(folder, failure);
  }
  std::string Resolved(const std::string& path) const override { return files_.Resolved(path); }
  std::size_t OpenLimit() const override { return files_.OpenLimit(); }
  CacheState Cached(const std::string& path) const override { return files_.Cached(path); }
  void ReadAhead(const std::string& path, std::int64_t offset, std::int64_t length) const override {
    files_.ReadAhead(path, offset, length);
  }
  bool IsTrash(std::string_view folder) const override { return files_.IsTrash(folder); }

 private:
  class Reader final : public FileReader {
   public:
    Reader(const FailingLooks& looks, std::unique_ptr<FileReader> reader) : looks_(looks), reader_(std::move(reader)) {}
    std::int64_t Size() const override { return reader_->Size(); }
    Result ReadAt(std::int64_t offset, std::span<char> into) override {
      return looks_.Fails() ? Result{0, Errors::Device} : reader_->ReadAt(offset, into);
    }

   private:
    const FailingLooks& looks_;
    const std::unique_ptr<FileReader> reader_;
  };
  bool Fails() const { return ++count_ == failAt_; }

  const FileSystem& files_;
  std::size_t failAt_ = 0;
  mutable std::size_t count_ = 0;
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
        looks(files),
        changes(files),
        log(looks, changes, "/home/me/state/undo"),
        executor(looks, changes, trash, log, [] { return std::int64_t{1'088'683'200}; }) {
    changes.SetDrive("/usb");
  }
  OperationResult Do(const ShFileOpStruct& operation) { return executor.ShFileOperation(operation, watch); }
  UndoResult Undone() { return Undo(looks, changes, log).Run(watch); }

  MemoryFileSystem& files;
  FailingLooks looks;
  MemoryFileChanges changes;
  FakeTrashPlaces trash;
  UndoLog log;
  ScriptedWatch watch;
  FileExecutor executor;
};

}  // namespace tresmor
