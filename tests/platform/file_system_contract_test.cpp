// What every implementation of FileSystem keeps to.
#include "platform/file_system_contract.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

namespace tresmor {

namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

TEST_P(FileSystemContract, ListTellsNameKindAndHidden) {
  world_->MakeFile(At("top/file"), "x");
  world_->MakeFolder(At("top/folder"));
  world_->MakeLink(At("top/link"), "file");
  world_->MakeLink(At("top/linked folder"), "folder");
  world_->MakeFifo(At("top/fifo"));
  world_->MakeFile(At("top/.secret"), "");
  world_->Hide(At("top/.secret"));
  world_->MakeFolder(At("top/.cave"));
  world_->Hide(At("top/.cave"));

  FolderListing listing;
  ASSERT_EQ(files_.List(At("top"), listing), Errors::None);
  std::vector<std::tuple<std::string, EntryKind, bool>> seen;
  for (const auto& entry : listing.entries) seen.emplace_back(listing.Name(entry), entry.kind, entry.hidden);
  using Row = std::tuple<std::string, EntryKind, bool>;
  EXPECT_THAT(seen,
              UnorderedElementsAre(Row{"file", EntryKind::File, false}, Row{"folder", EntryKind::Folder, false},
                                   Row{"link", EntryKind::Other, false}, Row{"linked folder", EntryKind::Other, false},
                                   Row{"fifo", EntryKind::Other, false}, Row{".secret", EntryKind::File, true},
                                   Row{".cave", EntryKind::Folder, true}));
  EXPECT_FALSE(listing.forbidden);
  EXPECT_EQ(listing.identity, Stat(At("top")).identity);
  EXPECT_EQ(listing.size, Stat(At("top")).size);
  EXPECT_EQ(listing.changedNs, Stat(At("top")).changedNs);
}

TEST_P(FileSystemContract, StatTellsLinksFromOtherKinds) {
  world_->MakeFile(At("top/file"), "x");
  world_->MakeLink(At("top/link"), "file");
  world_->MakeLink(At("top/nowhere"), "missing");
  world_->MakeFifo(At("top/fifo"));
  for (const char* link : {"top/link", "top/nowhere"}) EXPECT_TRUE(Stat(At(link)).link) << link;
  for (const char* other : {"top", "top/file", "top/fifo"}) EXPECT_FALSE(Stat(At(other)).link) << other;
}

TEST_P(FileSystemContract, ListReplacesWhatTheListingHeld) {
  world_->MakeFile(At("one/a"), "");
  world_->MakeFolder(At("two"));
  FolderListing listing;
  ASSERT_EQ(files_.List(world_->ForbiddenFolder(), listing), Errors::None);
  ASSERT_EQ(files_.List(At("one/"), listing), Errors::None);
  EXPECT_EQ(listing.entries.size(), 1u);
  EXPECT_FALSE(listing.forbidden);
  ASSERT_EQ(files_.List(At("two"), listing), Errors::None);
  EXPECT_TRUE(listing.entries.empty());
  EXPECT_TRUE(listing.names.empty());
  EXPECT_EQ(files_.List(At("three"), listing), Errors::FileNotFound);
  EXPECT_TRUE(listing.entries.empty());
}

TEST_P(FileSystemContract, ListGivesManyEntriesOnceEach) {
  std::vector<std::string> wanted;
  for (int i = 0; i < 3000; ++i) {
    wanted.push_back(std::string(40, 'n') + std::to_string(i));
    world_->MakeFile(At("many/" + wanted.back()), "");
  }
  EXPECT_THAT(Names(At("many")), testing::UnorderedElementsAreArray(wanted));
}

TEST_P(FileSystemContract, ListFollowsALinkAtItsEnd) {
  world_->MakeFile(At("real/a"), "");
  world_->MakeLink(At("link"), "real");
  world_->MakeLink(At("link to link"), At("link"));
  FolderListing listing;
  ASSERT_EQ(files_.List(At("link to link"), listing), Errors::None);
  EXPECT_EQ(listing.entries.size(), 1u);
  EXPECT_EQ(listing.identity, Stat(At("real")).identity);
  EXPECT_THAT(Names(At("link/")), ElementsAre("a"));
}

TEST_P(FileSystemContract, ListTellsWhyItFails) {
  world_->MakeFile(At("file"), "");
  world_->MakeFifo(At("fifo"));
  world_->MakeLink(At("nowhere"), "missing");
  world_->MakeLink(At("to file"), "file");
  world_->MakeLink(At("circle"), "other circle");
  world_->MakeLink(At("other circle"), "circle");
  EXPECT_EQ(ListFailure(At("missing")), Errors::FileNotFound);
  EXPECT_EQ(ListFailure(At("nowhere")), Errors::FileNotFound);
  EXPECT_EQ(ListFailure(""), Errors::FileNotFound);
  EXPECT_EQ(ListFailure(At("file")), Errors::PathAccess);
  EXPECT_EQ(ListFailure(At("file/")), Errors::PathAccess);
  EXPECT_EQ(ListFailure(At("file/x")), Errors::PathAccess);
  EXPECT_EQ(ListFailure(At("fifo")), Errors::PathAccess);
  EXPECT_EQ(ListFailure(At("to file")), Errors::PathAccess);
  EXPECT_EQ(ListFailure(At("circle")), Errors::PathAccess);
}

TEST_P(FileSystemContract, NothingIsListedOfAForbiddenFolder) {
  FolderListing listing;
  EXPECT_EQ(files_.List(world_->ForbiddenFolder(), listing), Errors::None);
  EXPECT_TRUE(listing.forbidden);
  EXPECT_TRUE(listing.entries.empty());
}

TEST_P(FileSystemContract, StatTellsWhatAFileIs) {
  world_->MakeFile(At("file"), "12345");
  world_->SetModified(At("file"), 1'057'104'000);
  const FileStat stat = Stat(At("file"));
  EXPECT_EQ(stat.kind, EntryKind::File);
  EXPECT_FALSE(stat.hidden);
  EXPECT_EQ(stat.size, 5);
  EXPECT_EQ(stat.modified, 1'057'104'000);
  EXPECT_GT(stat.changedNs, 0);
  EXPECT_EQ(stat.links, 1u);
  EXPECT_EQ(Stat(world_->Root()).kind, EntryKind::Folder);
  world_->SetModified(At("file"), -86'400);
  EXPECT_EQ(Stat(At("file")).modified, -86'400);
}

TEST_P(FileSystemContract, StatTellsHidden) {
  world_->MakeFile(At(".cave/file"), "");
  world_->Hide(At(".cave"));
  EXPECT_TRUE(Stat(At(".cave")).hidden);
  EXPECT_TRUE(Stat(At(".cave/")).hidden);
  EXPECT_FALSE(Stat(At(".cave/file")).hidden);
}

TEST_P(FileSystemContract, StatDoesNotFollowALinkAtTheEnd) {
  world_->MakeFile(At("real/file"), "12345");
  world_->MakeLink(At("link"), "real");
  world_->MakeLink(At("nowhere"), "missing");
  EXPECT_EQ(Stat(At("link")).kind, EntryKind::Other);
  EXPECT_EQ(Stat(At("nowhere")).kind, EntryKind::Other);
  EXPECT_EQ(Stat(At("link/")).identity, Stat(At("real")).identity);
  EXPECT_EQ(Stat(At("link/file")).identity, Stat(At("real/file")).identity);
}

TEST_P(FileSystemContract, StatTellsWhyItFails) {
  world_->MakeFile(At("file"), "");
  EXPECT_EQ(StatFailure(At("missing")), Errors::FileNotFound);
  EXPECT_EQ(StatFailure(At("missing/x")), Errors::FileNotFound);
  EXPECT_EQ(StatFailure(""), Errors::FileNotFound);
  EXPECT_EQ(StatFailure(At("file/x")), Errors::PathAccess);
  EXPECT_EQ(StatFailure(At("file/")), Errors::PathAccess);
  EXPECT_EQ(StatFailure(At(std::string(256, 'n'))), Errors::BadFileName);
  EXPECT_EQ(StatFailure(At(std::string("file\0x", 6))), Errors::BadFileName);
}

TEST_P(FileSystemContract, HardLinksAreOneFile) {
  world_->MakeFile(At("a"), "1");
  world_->MakeFile(At("b"), "1");
  world_->MakeHardLink(At("c"), At("a"));
  EXPECT_EQ(Stat(At("a")).identity, Stat(At("c")).identity);
  EXPECT_NE(Stat(At("a")).identity, Stat(At("b")).identity);
  EXPECT_EQ(Stat(At("a")).links, 2u);
  EXPECT_EQ(Stat(At("c")).links, 2u);
  EXPECT_EQ(Stat(At("a")).changedNs, Stat(At("c")).changedNs);
}

TEST_P(FileSystemContract, DotsInAPathAreSteps) {
  world_->MakeFile(At("a/b/file"), "1");
  EXPECT_EQ(Stat(At("a/../a/./b/file")).identity, Stat(At("a/b/file")).identity);
  EXPECT_EQ(Stat(At("a//b//file")).identity, Stat(At("a/b/file")).identity);
  EXPECT_EQ(StatFailure(At("a/b/file/../file")), Errors::PathAccess);
}

TEST_P(FileSystemContract, ReadAtGivesTheBytesOfThePlace) {
  world_->MakeFile(At("file"), "0123456789");
  const auto reader = Open(At("file"));
  ASSERT_NE(reader, nullptr);
  EXPECT_EQ(reader->Size(), 10);
  EXPECT_EQ(Read(*reader, 4, 3), "456");
  EXPECT_EQ(Read(*reader, 0, 10), "0123456789");
  EXPECT_EQ(Read(*reader, 0, 100), "0123456789");
  EXPECT_EQ(Read(*reader, 8, 2), "89");
  EXPECT_EQ(Read(*reader, 8, 3), "89");
  EXPECT_EQ(Read(*reader, 10, 1), "");
  EXPECT_EQ(Read(*reader, 1'000'000'000'000, 1), "");
  EXPECT_EQ(Read(*reader, 3, 0), "");
}

TEST_P(FileSystemContract, AnEmptyFileReadsAsNothing) {
  world_->MakeFile(At("empty"), "");
  const auto reader = Open(At("empty"));
  ASSERT_NE(reader, nullptr);
  EXPECT_EQ(reader->Size(), 0);
  EXPECT_EQ(Read(*reader, 0, 400), "");
}

TEST_P(FileSystemContract, LargeFilesReadNearTheirEnd) {
  constexpr std::int64_t size = std::int64_t{8} << 30;
  world_->MakeSparse(At("large"), size, "the end");
  EXPECT_EQ(Stat(At("large")).size, size);
  const auto reader = Open(At("large"));
  ASSERT_NE(reader, nullptr);
  EXPECT_EQ(reader->Size(), size);
  EXPECT_EQ(Read(*reader, size - 8, 100), std::string(1, '\0') + "the end");
}

TEST_P(FileSystemContract, OnlyRegularFilesOpen) {
  world_->MakeFile(At("folder/file"), "1");
  world_->MakeLink(At("link"), "folder/file");
  world_->MakeFifo(At("fifo"));
  EXPECT_EQ(OpenFailure(At("folder")), Errors::PathAccess);
  EXPECT_EQ(OpenFailure(At("folder/")), Errors::PathAccess);
  EXPECT_EQ(OpenFailure(At("folder/file/")), Errors::PathAccess);
  EXPECT_EQ(OpenFailure(At("link")), Errors::PathAccess);
  EXPECT_EQ(OpenFailure(At("fifo")), Errors::PathAccess);
  EXPECT_EQ(OpenFailure(At("missing")), Errors::FileNotFound);
  EXPECT_EQ(OpenFailure(""), Errors::FileNotFound);
  EXPECT_EQ(OpenFailure(At(std::string("folder/file\0", 12))), Errors::BadFileName);
}

TEST_P(FileSystemContract, AnOpenFileKeepsItsSizeAndShowsWhatIsWritten) {
  world_->MakeFile(At("file"), "0123456789");
  const auto reader = Open(At("file"));
  ASSERT_NE(reader, nullptr);
  world_->SetContent(At("file"), "abc");
  EXPECT_EQ(reader->Size(), 10);
  EXPECT_EQ(Read(*reader, 0, 10), "abc");
  world_->SetContent(At("file"), "abcdefghijklm");
  EXPECT_EQ(reader->Size(), 10);
  EXPECT_EQ(Read(*reader, 8, 10), "ijklm");
}

TEST_P(FileSystemContract, ARemovedFileStaysReadableWhileOpen) {
  world_->MakeFile(At("file"), "0123456789");
  const auto reader = Open(At("file"));
  ASSERT_NE(reader, nullptr);
  world_->Remove(At("file"));
  EXPECT_EQ(Read(*reader, 5, 10), "56789");
  EXPECT_EQ(OpenFailure(At("file")), Errors::FileNotFound);
  EXPECT_THAT(Names(world_->Root()), ElementsAre());
}

TEST_P(FileSystemContract, RunningOutOfOpenFilesIsNoLastingFailure) {
  world_->MakeFile(At("file"), "1");
  world_->WithFewFiles([&] {
    std::vector<std::unique_ptr<FileReader>> readers;
    Errors failure = Errors::None;
    while (readers.size() < 100) {
      auto reader = files_.Open(At("file"), failure);
      if (!reader) break;
      readers.push_back(std::move(reader));
    }
    EXPECT_EQ(readers.size(), 5u);
    EXPECT_EQ(failure, Errors::TooManyFiles);
    readers.pop_back();
    EXPECT_NE(files_.Open(At("file"), failure), nullptr);
    EXPECT_EQ(failure, Errors::None);
  });
}

TEST_P(FileSystemContract, AnUnreadableFileStillHasALength) {
  world_->MakeFile(At("file"), "12345");
  world_->WithoutAccess(At("file"), [&] {
    EXPECT_EQ(OpenFailure(At("file")), Errors::PermissionDenied);
    EXPECT_EQ(Stat(At("file")).size, 5);
    EXPECT_THAT(Names(world_->Root()), ElementsAre("file"));
  });
  EXPECT_EQ(Content(At("file")), "12345");
}

TEST_P(FileSystemContract, AnUnreadableFolderGivesNothing) {
  world_->MakeFile(At("folder/file"), "12345");
  world_->WithoutAccess(At("folder"), [&] {
    EXPECT_EQ(ListFailure(At("folder")), Errors::PermissionDenied);
    EXPECT_EQ(StatFailure(At("folder/file")), Errors::PermissionDenied);
    EXPECT_EQ(OpenFailure(At("folder/file")), Errors::PermissionDenied);
    EXPECT_EQ(Stat(At("folder")).kind, EntryKind::Folder);
    FileStat stat;
    EXPECT_EQ(OpenFolder(At("folder"))->Stat("file", stat), Errors::PermissionDenied);
  });
  EXPECT_THAT(Names(At("folder")), ElementsAre("file"));
}

TEST_P(FileSystemContract, NamesAreAnyBytes) {
  const std::vector<std::string> names = {"line\nfeed", "\xFF\xC3(", "*?",         " blanks ",
                                          "...",        "\x01\x7F",  "\"quoted\"", std::string(255, '\xFE')};
  for (const std::string& name : names) world_->MakeFile(world_->Root() + name, name);
  EXPECT_THAT(Names(world_->Root()), testing::UnorderedElementsAreArray(names));
  for (const std::string& name : names) EXPECT_EQ(Content(world_->Root() + name), name);
}

TEST_P(FileSystemContract, PathsMayBeOfAnyLength) {
  // Around the lengths at which an adapter cuts, so that cuts meet names, separators and ends.
  for (const std::size_t around : {std::size_t{4096}, std::size_t{8192}}) {
    for (std::size_t length = around - 8; length < around + 8; ++length) {
      std::string folder = At("long");
      while (folder.size() + 250 < length) folder += Separator() + std::string(180 + length % 16, 'd');
      const std::string path = folder + Separator() + std::string(length - folder.size() - 1, 'f');
      world_->MakeFile(path, "1");
      EXPECT_EQ(Content(path), "1") << length;
      EXPECT_EQ(Stat(path).size, 1) << length;
      EXPECT_THAT(Names(folder), ElementsAre(GetFileNameOf(path, files_.Style()))) << length;
      world_->Remove(path);
      EXPECT_EQ(StatFailure(path), Errors::FileNotFound) << length;
    }
  }
}

TEST_P(FileSystemContract, FoldersMayBeTwoThousandDeep) {
  std::string folder = "0";
  for (int i = 1; i < 2000; ++i) folder += "/level" + std::to_string(i);
  world_->MakeFile(At(folder + "/file"), "12345");
  EXPECT_THAT(Names(At(folder)), ElementsAre("file"));
  EXPECT_THAT(Names(At(folder + "//")), ElementsAre("file"));
  EXPECT_EQ(Content(At(folder + "/file")), "12345");
  EXPECT_EQ(Stat(At(folder + "/file")).size, 5);
  EXPECT_EQ(StatFailure(At(folder + "/missing")), Errors::FileNotFound);
  EXPECT_EQ(ListFailure(At(folder + "/file/" + folder)), Errors::PathAccess);
  FileStat stat;
  const auto deepest = OpenFolder(At(folder));
  ASSERT_NE(deepest, nullptr);
  EXPECT_EQ(deepest->Stat("file", stat), Errors::None);
  EXPECT_EQ(stat.size, 5);
  EXPECT_EQ(deepest->Stat("missing", stat), Errors::FileNotFound);
}

TEST_P(FileSystemContract, AskingAheadDisturbsNothing) {
  world_->MakeFile(At("file"), "12345");
  world_->MakeFile(At("empty"), "");
  world_->MakeFifo(At("fifo"));
  for (const char* path : {"file", "empty", "fifo", "missing", ""}) {
    files_.ReadAhead(At(path), 0, 1 << 20);
    files_.Cached(At(path));
  }
  EXPECT_EQ(Content(At("file")), "12345");
}

TEST_P(FileSystemContract, EightFilesMayBeOpen) {
  world_->MakeFile(At("file"), "1");
  EXPECT_GE(files_.OpenLimit(), 8u);
  std::vector<std::unique_ptr<FileReader>> readers;
  for (int i = 0; i < 8; ++i) readers.push_back(Open(At("file")));
  EXPECT_THAT(readers, testing::Each(testing::NotNull()));
}

TEST_P(FileSystemContract, ATrashFolderIsToldByItsName) {
  EXPECT_TRUE(files_.IsTrash(At(".Trash")));
  EXPECT_TRUE(files_.IsTrash(At(".Trash/")));
  EXPECT_FALSE(files_.IsTrash(At(".Trash/inside")));
  EXPECT_FALSE(files_.IsTrash(At("x.Trash")));
  EXPECT_FALSE(files_.IsTrash(At(".Trashy")));
  EXPECT_FALSE(files_.IsTrash(At("Trash")));
  EXPECT_FALSE(files_.IsTrash(world_->Root()));
}

TEST_P(FileSystemContract, EveryRoutineMayRunOnManyThreads) {
  for (int i = 0; i < 20; ++i) world_->MakeFile(At("top/file" + std::to_string(i)), std::to_string(i));
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&] {
      for (int round = 0; round < 5; ++round) {
        EXPECT_EQ(Names(At("top")).size(), 20u);
        EXPECT_EQ(ListFailure(world_->Root()), Errors::None);
        for (int i = 0; i < 20; ++i) {
          const std::string path = At("top/file" + std::to_string(i));
          files_.ReadAhead(path, 0, 100);
          EXPECT_EQ(Content(path), std::to_string(i));
          EXPECT_EQ(Stat(path).kind, EntryKind::File);
          files_.Cached(path);
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
}

INSTANTIATE_TEST_SUITE_P(All, FileSystemContract, AllImplementations(), NameOf);

}  // namespace

}  // namespace tresmor
