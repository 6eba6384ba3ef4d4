// The program itself on real files.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cerrno>
#include <csignal>
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
    std::signal(SIGINT, SIG_DFL);  // may be ignored where tests run in the background
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
    endedBy = WIFSIGNALED(ended) ? WTERMSIG(ended) : 0;
    return text;
  }

  std::filesystem::path root_;
  int status = -1;
  int endedBy = 0;  // the signal
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
  for (const char* version : {"\"$cli\" --version", "\"$cli\" find --version"}) {
    EXPECT_EQ(Shell(version), "tresmor-cli 3.1.0\n") << version;
    EXPECT_EQ(status, 0) << version;
  }
  EXPECT_THAT(Shell("\"$cli\" find nowhere 2>&1"), HasSubstr("'nowhere' does not exist"));
  EXPECT_EQ(status, 2);
  EXPECT_THAT(Shell("\"$cli\" find . 2>&1 >/dev/full"), HasSubstr("can't be written"));
  EXPECT_EQ(status, 3);
}

TEST_F(ProgramTest, ASessionIsReadAndWrittenThroughLinks) {
  MakeFile("a", "same");
  MakeFile("b", "same");
  const std::string save = "\"$cli\" find . --pattern '?' --quiet --format csv --save ";
  Shell("mkdir kept && " + save + "kept/s.Tresmor && ln -s s.Tresmor kept/near && ln -s \"$PWD/kept/near\" far");
  EXPECT_EQ(status, 0);
  const std::string groups = root_.string() + "/a\n" + root_.string() + "/b\n";
  EXPECT_EQ(Shell("\"$cli\" show far --types duplicates --format groups | sort"), groups);
  EXPECT_THAT(Shell("\"$cli\" mark far --by-date older && \"$cli\" show kept/s.Tresmor"), HasSubstr("* "));
  EXPECT_EQ(status, 0);
  MakeFile("b", "else");
  Shell("\"$cli\" run far --quiet --save far");
  EXPECT_EQ(Shell("\"$cli\" show kept/s.Tresmor --types duplicates --format groups"), "");
  EXPECT_EQ(Shell("readlink kept/near far"), "s.Tresmor\n" + root_.string() + "/kept/near\n");
}

// A disk of a few pages, which no other process sees.
TEST_F(ProgramTest, AFullDiskLeavesTheOldSession) {
  const std::string onSmallDisk = "unshare -Urm sh -c 'mkdir -p disk && mount -t tmpfs -o size=64k none disk && ";
  Shell(onSmallDisk + "true' 2>&1");
  if (status != 0) GTEST_SKIP() << "nobody but the superuser may mount a disk here";
  MakeFile("a", "same");
  MakeFile("b", "same");
  const std::string text = Shell("export cli; " + onSmallDisk +
                                 "\"$cli\" find . --quiet --format csv --save disk/s.Tresmor >/dev/null && "
                                 "cp disk/s.Tresmor old && { cat /dev/zero >disk/rest 2>/dev/null; "
                                 "\"$cli\" find . --quiet --format csv --save disk/s.Tresmor 2>&1 >/dev/null; "
                                 "echo $?; cmp old disk/s.Tresmor && ls -A disk; }'");
  EXPECT_THAT(text, HasSubstr("'disk/s.Tresmor' can't be saved: Disk full.\n3\nrest\ns.Tresmor\n"));
}

TEST_F(ProgramTest, AClosedPipeEndsItQuietly) {
  for (int i = 0; i < 3000; ++i) MakeFile(std::string(200, 'n') + std::to_string(i), "");
  EXPECT_EQ(Shell("{ \"$cli\" find . 2>&1 >&3; echo $? >&2; } 3>&1 2>status | true; cat status"), "3\n");
}

// The pair is so large, though all of it a hole, that the comparison is still running when the signal comes. The
// program takes the shell's place, since a shell starts what it puts into the background with SIGINT ignored.
TEST_F(ProgramTest, SignalsCancel) {
  MakeFile("empty", "");
  MakeFile("a", "x");
  MakeFile("b", "x");
  std::filesystem::resize_file(root_ / "a", 1ULL << 38);
  std::filesystem::resize_file(root_ / "b", 1ULL << 38);
  for (const std::string signal : {"TERM", "INT"}) {
    const std::string text = Shell("rm -f progress; { until grep -qs duplicate progress; do sleep 0.05; done; kill -" +
                                   signal + " $$; } & exec \"$cli\" find . --format csv --progress always 2>progress");
    EXPECT_THAT(text, HasSubstr(",empty,0,")) << signal;
    EXPECT_EQ(status, 130) << signal;
  }
}

// The trash and the memory of undo stand where the environment says.
TEST_F(ProgramTest, WhatWentToTheTrashComesBack) {
  MakeFile("a", "same");
  MakeFile("b", "same");
  const std::string prepared =
      "export XDG_DATA_HOME=\"$PWD/data\" XDG_STATE_HOME=\"$PWD/state\" && mkdir data && "
      "\"$cli\" find . --pattern '?' --quiet --format csv --save s.Tresmor >/dev/null && "
      "\"$cli\" mark s.Tresmor --pattern b >/dev/null && ";
  EXPECT_EQ(Shell(prepared + "\"$cli\" trash s.Tresmor --yes && ls data/Trash/* state/tresmor && test ! -e b && "
                             "\"$cli\" undo && cat b && ls data/Trash/*"),
            "1 file (4 Bytes) moved to the trash.\n"
            "data/Trash/files:\nb\n\ndata/Trash/info:\nb.trashinfo\n\nstate/tresmor:\nundo\n"
            "1 item put back.\nsamedata/Trash/files:\n\ndata/Trash/info:\n");
  EXPECT_EQ(status, 0);
}

// More findings than a pipe holds, and nobody reads on before the signal comes: the program still prints.
TEST_F(ProgramTest, OnceTheSearchIsOverOneSignalEndsIt) {
  for (int i = 0; i < 3000; ++i) MakeFile(std::string(200, 'n') + std::to_string(i), "");
  Shell(
      "mkfifo pipe; exec 3<>pipe; { head -c 1; kill -INT $$; exec cat; } <pipe >/dev/null 3>&- & "
      "exec \"$cli\" find . >pipe");
  EXPECT_EQ(endedBy, SIGINT);
}

}  // namespace
}  // namespace tresmor
