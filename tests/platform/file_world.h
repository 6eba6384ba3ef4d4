// What the contract suites need to set up files for one implementation of FileSystem and FileWriter.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/file_system.h"
#include "platform/file_writer.h"

namespace tresmor {

// An empty place for files. Paths are full and start with Root().
class FileWorld {
 public:
  virtual ~FileWorld() = default;
  virtual const FileSystem& Files() const = 0;
  virtual const FileWriter& Writer() const = 0;
  virtual std::string Root() const = 0;  // with a separator at its end

  virtual void MakeFolder(const std::string& path) = 0;  // with those above it
  virtual void MakeFile(const std::string& path, const std::string& content) = 0;
  // All zero bytes but for `tail` at the end.
  virtual void MakeSparse(const std::string& path, std::int64_t size, const std::string& tail) = 0;
  virtual void MakeLink(const std::string& path, const std::string& target) = 0;
  virtual void MakeFifo(const std::string& path) = 0;
  virtual void MakeHardLink(const std::string& path, const std::string& existing) = 0;
  virtual void Hide(const std::string& path) = 0;  // whose name begins with "."
  virtual void SetModified(const std::string& path, std::int64_t seconds) = 0;
  virtual void SetContent(const std::string& path, const std::string& content) = 0;
  virtual void Remove(const std::string& file) = 0;

  // Runs `work` while neither file nor folder at `path` may be read.
  virtual void WithoutAccess(const std::string& path, const std::function<void()>& work) = 0;
  // Runs `work` while the file at `path` may be read but not written.
  virtual void WithoutWriting(const std::string& path, const std::function<void()>& work) = 0;
  // Runs `work` while at most a few files may be open at once.
  virtual void WithFewFiles(const std::function<void()>& work) = 0;
  virtual std::string ForbiddenFolder() = 0;
};

std::unique_ptr<FileWorld> MakePosixWorld();
std::unique_ptr<FileWorld> MakeMemoryWorld(PathStyle style);

}  // namespace tresmor
