// The program itself on real files.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace tresmor {
namespace {

using testing::HasSubstr;

class ProgramTest : public testing::Test {
 protected:
  ProgramTest() {
    std::string pattern = std::filesystem::temp_directory_path() / "tresmor_XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) throw std::system_error(errno, std::generic_category(), pattern);
    root_ = pattern;
  }
  ~ProgramTest() override { std::filesystem::remove_all(root_); }

  void MakeFile(const std::string& name, const std::string& content) {
    std::ofstream(root_ / name, std::ios::binary) << content;
  }
  // What a shell command in the test's folder prints; $cli is the program.
  std::string Shell(const std::string& command) {
    const std::string whole = "cd '" + root_.string() + "' && cli='" TRESMOR_CLI "' && " + command;
    std::FILE* pipe = popen(whole.c_str(), "r");
    if (pipe == nullptr) throw std::system_error(errno, std::generic_category(), whole);
    std::string text;
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) text.push_back(static_cast<char>(c));
    const int ended = pclose(pipe);
    status = WIFEXITED(ended) ? WEXITSTATUS(ended) : -1;
    return text;
  }

  std::filesystem::path root_;
  int status = -1;
};

TEST_F(ProgramTest, FindsDuplicatesInTheWorkingFolder) {
  MakeFile("a", "same");
  MakeFile("b", "same");
  MakeFile("c", "else");
  const std::string text = Shell("\"$cli\" find . --format groups | sort");
  EXPECT_EQ(text, root_.string() + "/a\n" + root_.string() + "/b\n");
  EXPECT_EQ(status, 0);
}

TEST_F(ProgramTest, ExitsWithItsStatus) {
  MakeFile("a", "same");
  EXPECT_EQ(Shell("\"$cli\" --version"), "tresmor-cli 3.1.0\n");
  EXPECT_EQ(status, 0);
  EXPECT_THAT(Shell("\"$cli\" find nowhere 2>&1"), HasSubstr("'nowhere' does not exist"));
  EXPECT_EQ(status, 2);
  EXPECT_THAT(Shell("\"$cli\" find . 2>&1 >/dev/full"), HasSubstr("can't be written"));
  EXPECT_EQ(status, 3);
}

TEST_F(ProgramTest, AClosedPipeEndsItQuietly) {
  for (int i = 0; i < 3000; ++i) MakeFile(std::string(200, 'n') + std::to_string(i), "");
  EXPECT_EQ(Shell("{ \"$cli\" find . 2>&1 >&3; echo $? >&2; } 3>&1 2>status | true; cat status"), "3\n");
}

// The pair is so large, though all of it a hole, that the comparison is still running when the signal comes.
TEST_F(ProgramTest, TermCancels) {
  MakeFile("empty", "");
  MakeFile("a", "x");
  MakeFile("b", "x");
  std::filesystem::resize_file(root_ / "a", 1ULL << 38);
  std::filesystem::resize_file(root_ / "b", 1ULL << 38);
  const std::string text = Shell(
      "{ \"$cli\" find . --format csv --progress always 2>progress & } ; "
      "until grep -qs duplicate progress; do sleep 0.05; done; kill -TERM $!; wait $!");
  EXPECT_THAT(text, HasSubstr(",empty,0,"));
  EXPECT_EQ(status, 130);
}

}  // namespace
}  // namespace tresmor
