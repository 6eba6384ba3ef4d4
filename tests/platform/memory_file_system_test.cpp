// What tests rely on in the file system in memory, beside the contract.

#include "support/memory_file_system.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

namespace tresmor {

namespace {

using testing::ElementsAre;
using Call = MemoryFileSystem::Call;

std::vector<std::string> Names(const FolderListing& listing) {
  std::vector<std::string> names;
  for (const auto& entry : listing.entries) names.emplace_back(listing.Name(entry));
  return names;
}

std::string Content(const MemoryFileSystem& files, const std::string& path) {
  Errors failure = Errors::None;
  const auto reader = files.Open(path, failure);
  EXPECT_EQ(failure, Errors::None) << path;
  if (!reader) return {};
  std::string bytes(static_cast<std::size_t>(reader->Size()), '?');
  bytes.resize(reader->ReadAt(0, bytes).got);
  return bytes;
}

TEST(MemoryFiles, ListInTheOrderOfCreation) {
  MemoryFileSystem files;
  for (const char* path : {"/c", "/a/x", "/b"}) files.MakeFile(path, "");
  files.Remove("/c");
  files.MakeFile("/c", "");
  FolderListing listing;
  ASSERT_EQ(files.List("/", listing), Errors::None);
  EXPECT_THAT(Names(listing), ElementsAre("a", "b", "c"));
}

TEST(MemoryFiles, KeepNamesButFindThemWithoutCaseInTheWindowsStyle) {
  MemoryFileSystem files(PathStyle::Windows());
  files.MakeFile("C:\\Docs\\Report.TXT", "1");
  EXPECT_EQ(Content(files, "c:\\dOCS\\rEPORT.txt"), "1");
  EXPECT_THROW(files.MakeFile("C:\\DOCS\\report.txt", "2"), std::logic_error);
  files.MakeFile("C:\\DOCS\\other", "");
  FolderListing listing;
  ASSERT_EQ(files.List("C:\\docs\\", listing), Errors::None);
  EXPECT_THAT(Names(listing), ElementsAre("Report.TXT", "other"));
}

TEST(MemoryFiles, AreExactInThePosixStyle) {
  MemoryFileSystem files;
  files.MakeFile("/a", "1");
  files.MakeFile("/A", "2");
  EXPECT_EQ(Content(files, "/a"), "1");
  EXPECT_EQ(Content(files, "/A"), "2");
}

TEST(MemoryFiles, HiddenIsAnAttributeInTheWindowsStyle) {
  MemoryFileSystem files(PathStyle::Windows());
  files.MakeFile("C:\\.dot", "");
  files.MakeFile("C:\\plain", "");
  files.SetHidden("C:\\plain");
  FileStat stat;
  ASSERT_EQ(files.Stat("C:\\.dot", stat), Errors::None);
  EXPECT_FALSE(stat.hidden);
  ASSERT_EQ(files.Stat("C:\\plain", stat), Errors::None);
  EXPECT_TRUE(stat.hidden);
}

TEST(MemoryFiles, RecordEachCall) {
  MemoryFileSystem files;
  files.MakeFile("/d/a", "12345");
  files.MakeFile("/d/b", "");
  EXPECT_TRUE(files.Calls().empty());
  FolderListing listing;
  files.List("/d", listing);
  Errors failure = Errors::None;
  const auto folder = files.OpenFolder("/d", failure);
  FileStat stat;
  folder->Stat("a", stat);
  folder->Stat("b", stat);
  files.Cached("/d/a");
  files.ReadAhead("/d/a", 1, 2);
  const auto reader = folder->Open("a", failure);
  char buffer[3];
  reader->ReadAt(4, buffer);
  EXPECT_THAT(
      files.Calls(),
      ElementsAre(Call{MemoryFileSystem::Op::List, "/d", 0, 0}, Call{MemoryFileSystem::Op::Stat, "/d/a", 0, 0},
                  Call{MemoryFileSystem::Op::Stat, "/d/b", 0, 0}, Call{MemoryFileSystem::Op::Cached, "/d/a", 0, 0},
                  Call{MemoryFileSystem::Op::ReadAhead, "/d/a", 1, 2}, Call{MemoryFileSystem::Op::Open, "/d/a", 0, 0},
                  Call{MemoryFileSystem::Op::Read, "/d/a", 4, 3}));
  files.ClearCalls();
  EXPECT_TRUE(files.Calls().empty());
}

TEST(MemoryFiles, FailWhereTold) {
  MemoryFileSystem files;
  files.MakeFile("/d/a", "12345");
  files.MakeFile("/d/b", "");
  files.FailStat("/d/a", Errors::Device);
  FileStat stat;
  EXPECT_EQ(files.Stat("/d/a", stat), Errors::Device);
  files.FailStat("/d/a", Errors::None);
  EXPECT_EQ(files.Stat("/d/a", stat), Errors::None);

  files.FailOpen("/d/a", Errors::PermissionDenied);
  Errors failure = Errors::None;
  EXPECT_EQ(files.Open("/d/a", failure), nullptr);
  EXPECT_EQ(failure, Errors::PermissionDenied);
  EXPECT_EQ(files.OpenFiles(), 0u);

  files.FailList("/d", Errors::Device, 1);
  FolderListing listing;
  EXPECT_EQ(files.List("/d", listing), Errors::Device);
  EXPECT_THAT(Names(listing), ElementsAre("a"));
  files.FailList("/d", Errors::Device, 7);
  EXPECT_EQ(files.List("/d", listing), Errors::Device);
  EXPECT_THAT(Names(listing), ElementsAre("a", "b"));
}

TEST(MemoryFiles, CanBeReadUpToTheFailure) {
  MemoryFileSystem files;
  files.MakeFile("/a", "0123456789");
  files.FailRead("/a", 4, Errors::Device);
  Errors failure = Errors::None;
  const auto reader = files.Open("/a", failure);
  char buffer[6];
  auto result = reader->ReadAt(0, std::span(buffer).first(4));
  EXPECT_EQ(result.failure, Errors::None);
  result = reader->ReadAt(1, buffer);
  EXPECT_EQ(result.got, 3u);
  EXPECT_EQ(result.failure, Errors::Device);
  EXPECT_EQ(std::string_view(buffer, 3), "123");
  result = reader->ReadAt(6, buffer);
  EXPECT_EQ(result.got, 0u);
  EXPECT_EQ(result.failure, Errors::Device);
}

TEST(MemoryFiles, ChangeAtAChosenMoment) {
  MemoryFileSystem files;
  files.MakeFile("/a", "1");
  files.SetHook([&files](const Call& call) {
    if (call.op == MemoryFileSystem::Op::Open) files.Remove("/a");
  });
  FileStat stat;
  EXPECT_EQ(files.Stat("/a", stat), Errors::None);
  Errors failure = Errors::None;
  EXPECT_EQ(files.Open("/a", failure), nullptr);
  EXPECT_EQ(failure, Errors::FileNotFound);
  files.SetHook(nullptr);
  files.MakeFile("/a", "2");
  EXPECT_EQ(Content(files, "/a"), "2");
}

TEST(MemoryFiles, CountOpenFiles) {
  MemoryFileSystem files;
  files.MakeFile("/a", "1");
  files.SetOpenLimit(2);
  Errors failure = Errors::None;
  auto one = files.Open("/a", failure);
  auto two = files.Open("/a", failure);
  EXPECT_EQ(files.Open("/a", failure), nullptr);
  EXPECT_EQ(failure, Errors::TooManyFiles);
  EXPECT_EQ(files.OpenFiles(), 2u);
  one.reset();
  EXPECT_EQ(files.OpenFiles(), 1u);
  two.reset();
  EXPECT_EQ(files.OpenFiles(), 0u);
  EXPECT_EQ(files.PeakOpenFiles(), 2u);
}

TEST(MemoryFiles, ChangesShowInTheChangeTime) {
  MemoryFileSystem files;
  files.MakeFile("/a", "1");
  FileStat before;
  files.Stat("/a", before);
  files.SetContent("/a", "2");
  FileStat after;
  files.Stat("/a", after);
  EXPECT_EQ(before.identity, after.identity);
  EXPECT_LT(before.changedNs, after.changedNs);
  EXPECT_LT(before.modified, after.modified);
}

TEST(MemoryFiles, TellTheCacheAsSet) {
  MemoryFileSystem files;
  EXPECT_EQ(files.Cached("/a"), CacheState::Unknown);
  files.SetCached(CacheState::Cold);
  EXPECT_EQ(files.Cached("/a"), CacheState::Cold);
}

TEST(MemoryFiles, ChangeUnderReadersOnOtherThreads) {
  MemoryFileSystem files;
  files.MakeFile("/d/a", "1");
  files.SetHook([](const Call&) {});
  std::thread changer([&files] {
    for (int i = 0; i < 200; ++i) {
      files.SetContent("/d/a", std::string(static_cast<std::size_t>(i), 'x'));
      files.MakeFile("/d/" + std::to_string(i), "");
      files.Remove("/d/" + std::to_string(i));
    }
  });
  FolderListing listing;
  for (int i = 0; i < 200; ++i) {
    EXPECT_EQ(files.List("/d", listing), Errors::None);
    Content(files, "/d/a");
  }
  changer.join();
  EXPECT_EQ(files.OpenFiles(), 0u);
}

}  // namespace

}  // namespace tresmor
