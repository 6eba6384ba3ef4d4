#include "platform/posix/program_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/temp_tree.h"

namespace tresmor {
namespace {

class ProgramFolderTest : public TempTree {
 protected:
  ProgramFolderTest() {
    for (const char* folder : {"bin", "share", "share/tresmor", "libexec", "libexec/tresmor"}) MakeFolder(folder);
  }
};

TEST_F(ProgramFolderTest, IsBesideTheExecutable) {
  MakeFile("bin/err_read.bmp");
  MakeFile("share/tresmor/err_read.bmp");
  EXPECT_EQ(ProgramFolder(At("bin")), At("bin"));
}

TEST_F(ProgramFolderTest, IsInThePrefixElse) {
  MakeFile("share/tresmor/err_read.bmp");
  EXPECT_EQ(ProgramFolder(At("bin")), At("share/tresmor"));
}

TEST_F(ProgramFolderTest, IsWhereTheFilesAreThatLinksLeadTo) {
  for (const char* folder : {"store", "store/tresmor"}) MakeFolder(folder);
  MakeFile("store/tresmor/err_read.bmp");
  MakeLink("share/tresmor/err_read.bmp", At("store/tresmor/err_read.bmp"));
  EXPECT_EQ(ProgramFolder(At("bin")), At("store/tresmor"));
}

TEST_F(ProgramFolderTest, StaysBesideTheExecutableWithoutFiles) { EXPECT_EQ(ProgramFolder(At("bin")), At("bin")); }

TEST_F(ProgramFolderTest, HelpersAreBesideTheExecutable) {
  MakeFile("bin/tresmor-picture");
  MakeFile("libexec/tresmor/tresmor-picture");
  EXPECT_EQ(HelperFolder(At("bin")), At("bin"));
}

TEST_F(ProgramFolderTest, HelpersAreInThePrefixElse) {
  MakeFile("bin/err_read.bmp");
  MakeFile("libexec/tresmor/tresmor-picture");
  EXPECT_EQ(HelperFolder(At("bin")), At("libexec/tresmor"));
}

TEST_F(ProgramFolderTest, HelpersThatAreNowhereBelongBesideTheExecutable) {
  EXPECT_EQ(HelperFolder(At("bin")), At("bin"));
}

TEST(ExecutableFolderTest, HoldsTheRunningProgram) {
  const std::filesystem::path folder = FindExecutableFolder();
  EXPECT_TRUE(std::filesystem::equivalent(folder / "tests_platform", "/proc/self/exe")) << folder;
}

}  // namespace
}  // namespace tresmor
