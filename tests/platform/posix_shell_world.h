// A desktop of a test's own, and programs that tell how they were started.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>

#include "platform/posix/posix_shell.h"

namespace tresmor {

// A variable of the environment for the time of a test.
class ForNow {
 public:
  ForNow(const char* name, const std::string& value) : name_(name) {
    if (const char* before = std::getenv(name)) before_ = before;
    setenv(name, value.c_str(), 1);
  }
  ~ForNow() { before_ ? setenv(name_, before_->c_str(), 1) : unsetenv(name_); }
  ForNow(const ForNow&) = delete;
  ForNow& operator=(const ForNow&) = delete;

 private:
  const char* name_;
  std::optional<std::string> before_;
};

class PosixShellTest : public testing::Test {
 protected:
  PosixShellTest() {
    std::string pattern = std::filesystem::temp_directory_path() / "tresmor_shell_XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder for the test");
    root_ = std::filesystem::canonical(pattern);
  }
  ~PosixShellTest() override { std::filesystem::remove_all(root_); }

  std::string At(const std::string& path) const { return root_ + "/" + path; }
  void MakeFolder(const std::string& path) const { std::filesystem::create_directories(At(path)); }
  void MakeFile(const std::string& path, const std::string& content) const { std::ofstream(At(path)) << content; }
  // A program that tells where and with what it was called.
  void MakeProgram(const std::string& name) const {
    MakeFile(name, "#!/bin/sh\n{ echo \"$0\"; pwd; for word; do echo \"<$word>\"; done; } >'" + At("told") + "'\n");
    ASSERT_EQ(chmod(At(name).c_str(), 0755), 0);
  }
  // Wants to be read before the program can go on.
  void MakeTold() const { ASSERT_EQ(mkfifo(At("told").c_str(), 0600), 0); }
  // Waits for the program.
  std::string AllTold() const {
    std::ifstream told(At("told"));
    return {std::istreambuf_iterator<char>(told), {}};
  }
  // The same without the program's folder.
  std::string Told() const {
    const std::string text = AllTold();
    return text.substr(text.rfind('/', text.find('\n')) + 1);
  }

  std::string root_;
  PosixShell shell_;
};

}  // namespace tresmor
