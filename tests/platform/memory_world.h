// A place for files in memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "platform/file_world.h"
#include "support/memory_file_system.h"
#include "support/memory_file_writer.h"

namespace tresmor {

class MemoryWorld final : public FileWorld {
 public:
  explicit MemoryWorld(PathStyle style)
      : files_(style), root_(style.separator == '/' ? "/home/world/" : "C:\\Users\\World\\") {
    files_.MakeFolder(root_);
  }

  MemoryFileSystem& Memory() { return files_; }
  const FileSystem& Files() const override { return files_; }
  const FileWriter& Writer() const override { return writer_; }
  std::string Root() const override { return root_; }
  void MakeFolder(const std::string& path) override { files_.MakeFolder(path); }
  void MakeFile(const std::string& path, const std::string& content) override { files_.MakeFile(path, content); }
  void MakeSparse(const std::string& path, std::int64_t size, const std::string& tail) override {
    files_.MakeFile(path, size, [size, tail](std::int64_t offset, std::span<char> into) {
      const std::int64_t tailAt = size - static_cast<std::int64_t>(tail.size());
      for (std::size_t i = 0; i < into.size(); ++i) {
        const std::int64_t at = offset + static_cast<std::int64_t>(i) - tailAt;
        into[i] = at < 0 ? '\0' : tail[static_cast<std::size_t>(at)];
      }
    });
  }
  void MakeLink(const std::string& path, const std::string& target) override { files_.MakeLink(path, target); }
  void MakeFifo(const std::string& path) override { files_.MakeFifo(path); }
  void MakeHardLink(const std::string& path, const std::string& existing) override {
    files_.MakeHardLink(path, existing);
  }
  void Hide(const std::string& path) override { files_.SetHidden(path); }
  void SetModified(const std::string& path, std::int64_t seconds) override { files_.SetModified(path, seconds); }
  void SetContent(const std::string& path, const std::string& content) override { files_.SetContent(path, content); }
  void Remove(const std::string& file) override { files_.Remove(file); }

  void WithoutAccess(const std::string& path, const std::function<void()>& work) override {
    files_.SetUnreadable(path);
    work();
    files_.SetUnreadable(path, false);
  }
  void WithoutWriting(const std::string& path, const std::function<void()>& work) override {
    files_.SetReadOnly(path);
    work();
    files_.SetReadOnly(path, false);
  }
  void WithFewFiles(const std::function<void()>& work) override {
    const std::size_t limit = files_.OpenLimit();
    files_.SetOpenLimit(5);
    work();
    files_.SetOpenLimit(limit);
  }
  std::string ForbiddenFolder() override {
    const std::string folder = root_ + "kernel";
    files_.MakeFile(folder + files_.Style().separator + "state", "x");
    files_.SetForbidden(folder);
    return folder;
  }

 private:
  MemoryFileSystem files_;
  const MemoryFileWriter writer_{files_};
  const std::string root_;
};

}  // namespace tresmor
