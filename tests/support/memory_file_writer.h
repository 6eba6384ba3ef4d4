// Writes the program's own files into a file system in memory.
#pragma once

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
    FileStat stat;
    if (files_.Stat(path, stat) == Errors::None) {
      if (stat.kind != EntryKind::File) return Errors::PathAccess;
      files_.SetContent(path, std::string(bytes));
    } else {
      files_.MakeFile(path, std::string(bytes));
    }
    return Errors::None;
  }

  Errors MakeFolder(const std::string& folder) const override {
    if (failure_ == Errors::None) files_.MakeFolder(folder);
    return failure_;
  }

 private:
  MemoryFileSystem& files_;
  Errors failure_ = Errors::None;
};

}  // namespace tresmor
