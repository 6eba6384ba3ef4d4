#include "search/file_helpers.h"

#include <gtest/gtest.h>

#include "search/zone_guard.h"
#include "support/memory_file_system.h"

namespace tresmor {
namespace {

constexpr std::int64_t kSomeDay = 1'057'104'000;  // 2003-07-02

TEST(FileDate, IsTheLastWriteOnTheUtcClock) {
  const ZoneGuard guard("AAA-2");  // two hours ahead of UTC
  MemoryFileSystem files;
  files.MakeFile("/a/x", "");
  files.SetModified("/a/x", kSomeDay);
  EXPECT_EQ(FormatStamp(GetFileDate(files, "/a/x")), "2003/07/02 00:00:00");
  Errors failure = Errors::None;
  const auto folder = files.OpenFolder("/a", failure);
  EXPECT_EQ(FormatStamp(GetFileDate(*folder, "x")), "2003/07/02 00:00:00");
  EXPECT_EQ(GetFileDate(*folder, "gone"), kZeroDate);
}

TEST(FileDate, IsZeroForWhatHasNone) {
  MemoryFileSystem files;
  files.MakeFile("/a/.x", "");
  files.MakeFile("/a/denied", "");
  files.FailStat("/a/denied", Errors::PermissionDenied);
  files.MakeFifo("/a/fifo");
  files.MakeFile("/a/ blank ", "");
  for (const char* path : {"/a/.x", "/a/denied", "/a/fifo", "/a", "/a/gone", "/a/blank", "/a/*", ""}) {
    EXPECT_EQ(GetFileDate(files, path), kZeroDate) << path;
  }
  EXPECT_NE(GetFileDate(files, "/a/ blank "), kZeroDate);
}

TEST(FileDate, OfAHiddenFileIsZeroByItsAttributeToo) {
  MemoryFileSystem files(PathStyle::Windows());
  files.MakeFile("C:\\x", "");
  EXPECT_NE(GetFileDate(files, "C:\\x"), kZeroDate);
  files.SetHidden("C:\\x");
  EXPECT_EQ(GetFileDate(files, "C:\\x"), kZeroDate);
}

TEST(Exists, AFileIsGoneOnlyWhereThatIsKnown) {
  MemoryFileSystem files;
  files.MakeFile("/a/b", "");
  files.MakeFile("/a/c", "");
  for (const Errors failure : {Errors::PermissionDenied, Errors::Device, Errors::TooManyFiles, Errors::BadFileName}) {
    files.FailStat("/a/b", failure);
    EXPECT_TRUE(ExistsFile(files, "/a/b")) << Describe(failure);
  }
  files.FailStat("/a/b", Errors::FileNotFound);
  EXPECT_FALSE(ExistsFile(files, "/a/b"));
  EXPECT_FALSE(ExistsFile(files, "/a/c/b"));
}

TEST(Exists, TakesNamesExactly) {
  MemoryFileSystem files;
  files.MakeFile("/a/b*c", "");
  files.MakeFile("/a/.hidden", "");
  files.MakeLink("/a/link", "nowhere");
  EXPECT_TRUE(ExistsFile(files, "/a/b*c"));
  EXPECT_TRUE(ExistsFile(files, "/a/.hidden"));
  EXPECT_TRUE(ExistsFile(files, "/a/link"));
  EXPECT_FALSE(ExistsFile(files, "/a/b?c"));
  EXPECT_FALSE(ExistsFile(files, "/a/*"));
  EXPECT_FALSE(ExistsFile(files, "/a"));
  EXPECT_FALSE(ExistsFile(files, ""));
  EXPECT_TRUE(ExistsPath(files, "/a/b*c"));
  EXPECT_TRUE(ExistsPath(files, "/a"));
  EXPECT_TRUE(ExistsPath(files, "/a/"));
  EXPECT_FALSE(ExistsPath(files, "/a/b"));
  EXPECT_FALSE(ExistsPath(files, "/*"));
  EXPECT_FALSE(ExistsPath(files, ""));
}

TEST(EmptyDir, AnyEntryButAFolderKeepsItFromBeingEmpty) {
  MemoryFileSystem files;
  files.MakeFolder("/empty");
  files.MakeFile("/subs/sub/x", "");
  files.MakeFile("/file/x", "");
  files.MakeFile("/hidden/.x", "");
  files.MakeLink("/link/l", "/empty");
  files.MakeFifo("/fifo/f");
  EXPECT_TRUE(IsEmptyDir(files, "/empty"));
  EXPECT_TRUE(IsEmptyDir(files, "/empty/"));
  EXPECT_TRUE(IsEmptyDir(files, "/subs"));
  for (const char* folder : {"/file", "/hidden", "/link", "/fifo"}) EXPECT_FALSE(IsEmptyDir(files, folder)) << folder;
}

TEST(EmptyDir, WhatCanNotBeListedIsNotEmpty) {
  MemoryFileSystem files;
  files.MakeFolder("/closed");
  files.SetUnreadable("/closed");
  files.MakeFolder("/pseudo");
  files.SetForbidden("/pseudo");
  files.MakeFile("/half/x", "");
  files.FailList("/half", Errors::Device);
  for (const char* folder : {"/closed", "/pseudo", "/half", "/gone"}) EXPECT_FALSE(IsEmptyDir(files, folder)) << folder;
}

TEST(LengthFailure, TellsNumberAndFile) {
  const auto text = LengthFailureText(Errors::PermissionDenied, "/a/x");
  ASSERT_TRUE(text);
  EXPECT_EQ(text->Whole(), std::string("Error 70: ") + Describe(Errors::PermissionDenied) +
                               "\nFile: '/a/x'\nTresmor will try to ignore this.");
}

TEST(LengthFailure, IsSilentOnFilesThatAreGone) {
  EXPECT_FALSE(LengthFailureText(Errors::FileNotFound, "/a/x"));
  EXPECT_FALSE(LengthFailureText(Errors::BadFileName, "/a/x"));
  EXPECT_FALSE(LengthFailureText(Errors::None, "/a/x"));
}

}  // namespace
}  // namespace tresmor
