// Files of the program's own on this machine.

#include "platform/posix/posix_file_writer.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/posix/short_path.h"

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

TEST_F(FileWriterTest, WhatIsPrivateIsTheUsersAlone) {
  const PosixFileWriter writer(PosixFileWriter::NewFiles::OfTheUserAlone);
  EXPECT_EQ(writer.MakeFolder(At("a/b")), Errors::None);
  EXPECT_EQ(writer.Replace(At("a/b/file"), "x"), Errors::None);
  EXPECT_EQ(Mode(At("a")), 0700U);
  EXPECT_EQ(Mode(At("a/b")), 0700U);
  EXPECT_EQ(Mode(At("a/b/file")), 0600U);
}

TEST_F(FileWriterTest, TakesTheOldFilesPlaceAndPermissions) {
  Make("file", "a longer old content");
  ASSERT_EQ(chmod(At("file").c_str(), 0604), 0);
  EXPECT_EQ(writer_.Replace(At("file"), "new"), Errors::None);
  EXPECT_EQ(Content("file"), "new");
  EXPECT_EQ(Mode(At("file")), 0604U);
  EXPECT_THAT(Names(), ElementsAre("file"));
}

TEST_F(FileWriterTest, RefusesWhatCanBeNoFile) {
  EXPECT_EQ(writer_.Replace(At(""), "x"), Errors::PathAccess);
  EXPECT_EQ(writer_.Replace(At("."), "x"), Errors::PathAccess);
  EXPECT_EQ(writer_.Replace("/dev/null", "x"), Errors::PathAccess);
  EXPECT_EQ(writer_.Replace("", "x"), Errors::BadFileName);
  EXPECT_EQ(writer_.Replace(At(std::string("a\0b", 3)), "x"), Errors::BadFileName);
  EXPECT_EQ(writer_.Replace(At(std::string(5000, 'n')), "x"), Errors::BadFileName);
  EXPECT_EQ(writer_.MakeFolder(At(std::string("a\0b", 3))), Errors::BadFileName);
  EXPECT_EQ(writer_.MakeFolder(At(std::string(5000, 'n'))), Errors::BadFileName);
  EXPECT_TRUE(Names().empty());
}

TEST_F(FileWriterTest, PathsMayBeRelative) {
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(At(""));
  EXPECT_EQ(writer_.Replace("file", "x"), Errors::None);
  EXPECT_EQ(writer_.MakeFolder("folder/below"), Errors::None);
  EXPECT_EQ(writer_.Replace("folder/below/file", "y"), Errors::None);
  std::filesystem::current_path(before);
  EXPECT_EQ(Content("file"), "x");
  EXPECT_EQ(Content("folder/below/file"), "y");
}

TEST(PathFailure, AFullDiskIsTold) {
  const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
  ASSERT_GE(full, 0);
  EXPECT_EQ(write(full, "x", 1), -1);
  EXPECT_EQ(PathFailure(errno), Errors::DiskFull);
  close(full);
  EXPECT_EQ(PathFailure(EDQUOT), Errors::DiskFull);
}

TEST(PathFailure, TellsWhyWritingFails) {
  EXPECT_EQ(PathFailure(EROFS), Errors::PermissionDenied);
  EXPECT_EQ(PathFailure(EACCES), Errors::PermissionDenied);
  EXPECT_EQ(PathFailure(EISDIR), Errors::PathAccess);
  EXPECT_EQ(PathFailure(ENOENT), Errors::FileNotFound);
  EXPECT_EQ(PathFailure(EIO), Errors::Device);
}

TEST(PathFailure, WhatAServerLostSightOfIsNotGone) { EXPECT_EQ(PathFailure(ESTALE), Errors::Device); }

using std::chrono::milliseconds;

TEST_F(FileWriterTest, ALockKeepsOthersOutUntilItGoes) {
  ASSERT_EQ(writer_.MakeFolder(At("folder")), Errors::None);
  std::filesystem::create_symlink("folder/file", At("link"));
  const PosixFileWriter other(PosixFileWriter::NewFiles::AsUsual, milliseconds(10));
  {
    const auto lock = writer_.Lock(At("folder/file"));
    EXPECT_TRUE(lock);
    EXPECT_FALSE(other.Lock(At("folder/file")));
    EXPECT_FALSE(other.Lock(At("link")));
    EXPECT_TRUE(other.Lock(At("file")));
  }
  EXPECT_TRUE(other.Lock(At("folder/file")));
  EXPECT_FALSE(other.Lock(At("missing/file")));
}

// Two contents by turns, until the program is killed in the midst of it.
TEST_F(FileWriterTest, AKilledProgramLeavesTheOldFileOrTheNewOne) {
  const std::string contents[] = {std::string(200'000, 'a'), std::string(300'000, 'b')};
  constexpr int kKills = 100;
  ASSERT_EQ(writer_.Replace(At("file"), contents[0]), Errors::None);
  for (int kill = 0; kill < kKills; ++kill) {
    int begun[2];
    ASSERT_EQ(pipe(begun), 0);
    const pid_t child = fork();
    if (child == 0) {
      for (int i = 1;; ++i) {
        if (writer_.Replace(At("file"), contents[i % 2]) != Errors::None) _exit(1);
        if (i == 1 && write(begun[1], "x", 1) != 1) _exit(1);
      }
    }
    close(begun[1]);
    char byte = 0;
    EXPECT_EQ(read(begun[0], &byte, 1), 1);
    close(begun[0]);
    usleep(static_cast<useconds_t>(kill * 37));
    ::kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    const std::string found = Content("file");
    EXPECT_TRUE(found == contents[0] || found == contents[1]) << found.size();
  }
  const auto orphans = static_cast<int>(Names().size()) - 1;
  RecordProperty("orphans", orphans);
  // Where files can do without a name, they have one of their own for a moment at most.
  const int nameless = open(At("").c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, 0600);
  if (nameless < 0) return;
  close(nameless);
  EXPECT_LT(orphans, kKills / 4);
}

// A limit on the size of files cuts the writing short, as a full disk would.
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
  EXPECT_EQ(failure, Errors::DiskFull);
  EXPECT_EQ(Content("file"), "old");
  EXPECT_THAT(Names(), ElementsAre("file"));
}

}  // namespace

}  // namespace tresmor
