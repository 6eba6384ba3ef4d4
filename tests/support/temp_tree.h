// A real folder for a test, which goes with it.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/posix/posix_file_system.h"

namespace tresmor {

inline void Check(bool ok, const std::string& what) {
  if (!ok) throw std::system_error(errno, std::generic_category(), what);
}

class TempTree : public testing::Test {
 protected:
  TempTree() {
    std::string pattern = std::filesystem::temp_directory_path() / "tresmor_XXXXXX";
    Check(mkdtemp(pattern.data()) != nullptr, pattern);
    Check(chmod(pattern.c_str(), 0755) == 0, pattern);
    root_ = pattern + "/";
  }
  // By a program that goes as deep as these trees do.
  ~TempTree() override { EXPECT_EQ(std::system(("rm -rf -- '" + root_ + "'").c_str()), 0); }

  std::string At(const std::string& path) const { return root_ + path; }
  void MakeFolder(const std::string& path) { Check(mkdir(At(path).c_str(), 0755) == 0, path); }
  void MakeFile(const std::string& path, std::string_view content = "") { MakeFileIn(AT_FDCWD, At(path), content); }
  void MakeLink(const std::string& path, const std::string& target) {
    Check(symlink(target.c_str(), At(path).c_str()) == 0, path);
  }
  // All zero bytes but for `last`, the last one; takes no room.
  void MakeSparse(const std::string& path, std::int64_t size, char last) {
    MakeFile(path);
    const int file = open(At(path).c_str(), O_WRONLY | O_CLOEXEC);
    Check(file >= 0 && pwrite(file, &last, 1, size - 1) == 1, path);
    close(file);
  }

  // `depth` folders of one name, one in the other, with a file named "end" in the last.
  void MakeShaft(const std::string& name, int depth, std::string_view content = "") {
    int folder = open(root_.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    for (int i = 0; i < depth; ++i) {
      Check(mkdirat(folder, name.c_str(), 0755) == 0, name);
      const int next = openat(folder, name.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
      Check(next >= 0, name);
      close(folder);
      folder = next;
    }
    MakeFileIn(folder, "end", content);
    close(folder);
  }

  std::string root_;
  PosixFileSystem files_;

 private:
  static void MakeFileIn(int folder, const std::string& path, std::string_view content) {
    const int file = openat(folder, path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    Check(file >= 0, path);
    Check(write(file, content.data(), content.size()) == static_cast<ssize_t>(content.size()), path);
    close(file);
  }
};

}  // namespace tresmor
