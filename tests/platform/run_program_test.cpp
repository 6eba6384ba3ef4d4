// Programs that are started for the user: what they get, and what is left of them.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>

#include "platform/posix/posix_file_system.h"
#include "platform/posix/run_detached.h"
#include "platform/posix_shell_world.h"

namespace tresmor {
namespace {

TEST_F(PosixShellTest, AProgramGetsTheFileAsOneArgument) {
  const ForNow path("PATH", root_);
  MakeTold();
  MakeProgram("my editor");
  shell_.RunProgram("", "/a");
  shell_.RunProgram("no such program", "/a");
  shell_.RunProgram("my editor", "/tmp/a b; $(touch x) \"'*.txt");
  EXPECT_EQ(Told(), "my editor\n/\n</tmp/a b; $(touch x) \"'*.txt>\n");
  shell_.RunProgram(At("my editor"), "--help");
  EXPECT_EQ(Told(), "my editor\n/\n<" + (std::filesystem::current_path() / "--help").string() + ">\n");
}

TEST_F(PosixShellTest, AProgramsPathMayBeRelative) {
  const ForNow path("PATH", "/nowhere:/bin:/usr/bin");
  MakeTold();
  MakeProgram("editor");
  shell_.RunProgram(std::filesystem::relative(At("editor")).string(), "/a");
  EXPECT_EQ(Told(), "editor\n/\n</a>\n");
}

TEST_F(PosixShellTest, AnAddressIsOneArgumentOfTheDesktopsOpener) {
  const ForNow path("PATH", root_);
  MakeTold();
  MakeProgram("xdg-open");
  shell_.OpenUrl("--help");  // would be an option
  shell_.OpenUrl("https://x/?a=1&b='$HOME' `id`; <|>");
  EXPECT_EQ(Told(), "xdg-open\n/\n<https://x/?a=1&b='$HOME' `id`; <|>>\n");
}

TEST_F(PosixShellTest, AFileIsOneArgumentThatNoShellReadsAndNeverAnOption) {
  const ForNow path("PATH", root_);
  MakeTold();
  MakeProgram("xdg-open");
  shell_.ShellOpen("/tmp/a b; $(touch x) \"'*.csv");
  EXPECT_EQ(Told(), "xdg-open\n/\n</tmp/a b; $(touch x) \"'*.csv>\n");
  shell_.ShellOpen("--help");
  EXPECT_EQ(Told(), "xdg-open\n/\n<" + (std::filesystem::current_path() / "--help").string() + ">\n");
}

// A program would get the path up to the NUL, which is that of another file.
TEST_F(PosixShellTest, APathWithANulIsHandedToNobody) {
  const ForNow path("PATH", root_);
  const std::string withNul("/tmp/one\0two", 12);
  for (const char* program : {"xdg-open", "editor", "gdbus", "dbus-send"}) MakeProgram(program);
  MakeTold();
  shell_.ShellOpen(withNul);
  shell_.OpenUrl(withNul);
  shell_.RunProgram("editor", withNul);
  shell_.RunProgram(std::string("editor\0two", 10), "/tmp/one");
  shell_.RunProgram("editor", "/tmp/right");
  EXPECT_EQ(Told(), "editor\n/\n</tmp/right>\n");
  std::filesystem::remove(At("told"));
  EXPECT_FALSE(shell_.ShowFileProp(withNul));
  EXPECT_FALSE(std::filesystem::exists(At("told")));
  EXPECT_FALSE(RunToEnd({{"editor", withNul}}, "/", 5));
  EXPECT_FALSE(std::filesystem::exists(At("told")));
}

TEST_F(PosixShellTest, PropertiesAreAskedOfTheFileManager) {
  const ForNow path("PATH", root_);
  MakeProgram("dbus-send");
  EXPECT_TRUE(shell_.ShowFileProp("/a b/it's,\xff.txt"));
  EXPECT_EQ(Told(),
            "dbus-send\n/\n<--session>\n<--print-reply>\n<--dest=org.freedesktop.FileManager1>\n"
            "</org/freedesktop/FileManager1>\n<org.freedesktop.FileManager1.ShowItemProperties>\n"
            "<array:string:file:///a%20b/it%27s%2C%FF.txt>\n<string:>\n");
  MakeProgram("gdbus");
  EXPECT_TRUE(shell_.ShowFileProp("/~a-b_c.d"));
  EXPECT_EQ(Told(),
            "gdbus\n/\n<call>\n<--session>\n<--dest>\n<org.freedesktop.FileManager1>\n<--object-path>\n"
            "</org/freedesktop/FileManager1>\n<--method>\n<org.freedesktop.FileManager1.ShowItemProperties>\n"
            "<['file:///~a-b_c.d']>\n<>\n");
}

TEST_F(PosixShellTest, WhoAsksForPropertiesLearnsThatNobodyAnswered) {
  const ForNow path("PATH", root_);
  EXPECT_FALSE(shell_.ShowFileProp("/a"));
  MakeFile("gdbus", "#!/bin/sh\nexit 1\n");
  ASSERT_EQ(chmod(At("gdbus").c_str(), 0755), 0);
  MakeProgram("dbus-send");
  EXPECT_FALSE(shell_.ShowFileProp("/a"));
  EXPECT_FALSE(std::filesystem::exists(At("told")));  // the answer of the first holds
}

TEST_F(PosixShellTest, AProgramThatIsWaitedForEndsInTime) {
  EXPECT_TRUE(RunToEnd({{"no program"}, {"/bin/sh", "-c", "exit 0"}}, root_, 60));
  EXPECT_FALSE(RunToEnd({{"/bin/sh", "-c", "exit 3"}}, root_, 60));
  EXPECT_FALSE(RunToEnd({}, root_, 60));
  MakeTold();
  EXPECT_FALSE(RunToEnd({{"/bin/sh", "-c", "read line <told"}}, root_, 1));  // nobody ever writes
}

TEST_F(PosixShellTest, FailuresShowNothingAndLeaveNoChildBehind) {
  const ForNow path("PATH", root_);
  shell_.OpenUrl("https://x/");
  shell_.ShellOpen("/a");
  shell_.ShellOpen("");
  shell_.ShowFileProp("/a");
  RunDetached({{"/bin/sh", "-c", "exit 1"}}, At("no folder"));
  RunDetached({}, "/");
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST_F(PosixShellTest, ADetachedProgramHasNothingOfThisOnes) {
  MakeTold();
  RunDetached({{"no program"},
               {"/bin/sh", "-c", "links=$(readlink /proc/$$/fd/0 /proc/$$/fd/1 /proc/$$/fd/2); echo \"$links\" >told"}},
              root_);
  EXPECT_EQ(AllTold(), "/dev/null\n/dev/null\n/dev/null\n");
}

TEST_F(PosixShellTest, OtherProgramsMayOpenAsManyFilesAsThisOneMightAtItsStart) {
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
  ASSERT_GT(before.rlim_max, 200U);
  const rlimit atStart{200, before.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &atStart), 0);
  const PosixFileSystem raises;
  const PosixFileSystem changesNothingMore;
  rlimit raised{};
  getrlimit(RLIMIT_NOFILE, &raised);
  EXPECT_EQ(raised.rlim_cur, before.rlim_max);
  MakeTold();
  RunDetached({{"/bin/sh", "-c", "{ ulimit -Sn; ulimit -Hn; } >told"}}, root_);
  const std::string limits = AllTold();
  setrlimit(RLIMIT_NOFILE, &before);
  EXPECT_EQ(limits, "200\n" + std::to_string(before.rlim_max) + "\n");
}

TEST(PosixShellEditor, IsTheDesktopsOpener) { EXPECT_EQ(PosixShell().DefaultEditor(), "xdg-open"); }

}  // namespace
}  // namespace tresmor
