// Writes the program's own files into a file system in memory.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/file_writer.h"
#include "support/memory_file_system.h"

namespace tresmor {

// One thread at a time.
class MemoryFileWriter final : public FileWriter {
 public:
  explicit MemoryFileWriter(MemoryFileSystem& files) : files_(files) {}

  // From now on nothing can be written, until it is set to Errors::None.
  void Fail(Errors failure) { failure_ = failure; }

  Errors Replace(const std::string& path, std::string_view bytes) const override {
    if (failure_ != Errors::None) return failure_;
    const std::string target = files_.Resolved(path);
    FileStat stat;
    const Errors found = files_.Stat(target, stat);
    if (found == Errors::FileNotFound) return MakeFile(target, bytes);
    if (found != Errors::None) return found;
    if (stat.kind != EntryKind::File) return Errors::PathAccess;
    if (files_.IsReadOnly(target)) return Errors::PermissionDenied;
    files_.SetContent(target, std::string(bytes));
    return Errors::None;
  }

  Errors MakeFolder(const std::string& folder) const override {
    if (failure_ != Errors::None) return failure_;
    try {
      files_.MakeFolder(folder);
      return Errors::None;
    } catch (const std::logic_error&) {
      return Errors::PathAccess;  // something else stands in the way
    }
  }

 private:
  Errors MakeFile(const std::string& path, std::string_view bytes) const {
    FileStat folder;
    const Errors found = files_.Stat(std::string(GetFolderOf(path, files_.Style())), folder);
    if (found == Errors::None) files_.MakeFile(path, std::string(bytes));
    return found;
  }

  MemoryFileSystem& files_;
  Errors failure_ = Errors::None;
};

}  // namespace tresmor
