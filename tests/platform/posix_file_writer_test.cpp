// Files of the program's own on this machine.

#include "platform/posix/posix_file_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace tresmor {

namespace {

using testing::ElementsAre;

class FileWriterTest : public testing::Test {
 protected:
  FileWriterTest() {
    std::string pattern = std::filesystem::temp_directory_path() / "tresmor_writer_XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder for the test");
    root_ = pattern + "/";
  }
  ~FileWriterTest() override { std::filesystem::remove_all(root_); }

  std::string At(const std::string& path) const { return root_ + path; }
  void Make(const std::string& path, const std::string& content) { std::ofstream(At(path)) << content; }
  std::string Content(const std::string& path) const {
    std::ifstream file(At(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(root_)) names.push_back(entry.path().filename());
    return names;
  }
  static mode_t Mode(const std::string& path) {
    struct stat info {};
    EXPECT_EQ(lstat(path.c_str(), &info), 0);
    return info.st_mode & 07777;
  }

  PosixFileWriter writer_;

 private:
  std::string root_;
};

TEST_F(FileWriterTest, MakesAFileWithThePermissionsOfNewFiles) {
  const mode_t mask = umask(027);
  const PosixFileWriter writer;
  umask(mask);
  EXPECT_EQ(writer.Replace(At("file"), std::string("a\0b", 3)), Errors::None);
  EXPECT_EQ(Content("file"), std::string("a\0b", 3));
  EXPECT_EQ(Mode(At("file")), 0640U);
  EXPECT_THAT(Names(), ElementsAre("file"));
}

TEST_F(FileWriterTest, TakesTheOldFilesPlaceAndPermissions) {
  Make("file", "a longer old content");
  ASSERT_EQ(chmod(At("file").c_str(), 0604), 0);
  EXPECT_EQ(writer_.Replace(At("file"), "new"), Errors::None);
  EXPECT_EQ(Content("file"), "new");
  EXPECT_EQ(Mode(At("file")), 0604U);
  EXPECT_THAT(Names(), ElementsAre("file"));
}

TEST_F(FileWriterTest, WritesThroughALink) {
  Make("file", "old");
  std::filesystem::create_symlink("file", At("link"));
  EXPECT_EQ(writer_.Replace(At("link"), "new"), Errors::None);
  EXPECT_TRUE(std::filesystem::is_symlink(At("link")));
  EXPECT_EQ(Content("file"), "new");
}

TEST_F(FileWriterTest, RefusesWhatIsNoFile) {
  ASSERT_EQ(mkfifo(At("fifo").c_str(), 0600), 0);
  EXPECT_EQ(writer_.Replace(At("fifo"), "x"), Errors::PathAccess);
  EXPECT_EQ(writer_.Replace(At(""), "x"), Errors::PathAccess);
  EXPECT_EQ(writer_.Replace(At("missing/file"), "x"), Errors::FileNotFound);
  EXPECT_EQ(writer_.Replace("", "x"), Errors::BadFileName);
}

// A limit on the size of files stands for a full disk.
TEST_F(FileWriterTest, FailureLeavesTheOldFileAndNothingElse) {
  Make("file", "old");
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit low{1000, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &low);
  const Errors failure = writer_.Replace(At("file"), std::string(5000, 'x'));
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_NE(failure, Errors::None);
  EXPECT_EQ(Content("file"), "old");
  EXPECT_THAT(Names(), ElementsAre("file"));
}

TEST_F(FileWriterTest, MakesFoldersWithThoseAbove) {
  EXPECT_EQ(writer_.MakeFolder(At("a/b/c")), Errors::None);
  EXPECT_TRUE(std::filesystem::is_directory(At("a/b/c")));
  EXPECT_EQ(writer_.MakeFolder(At("a/b/c/")), Errors::None);
  Make("file", "");
  EXPECT_EQ(writer_.MakeFolder(At("file/x")), Errors::PathAccess);
}

}  // namespace

}  // namespace tresmor
