// What every implementation of FileSystem keeps to with open folders and with links.
#include "platform/file_system_contract.h"

#include <gtest/gtest.h>

namespace tresmor {

namespace {

class FolderContract : public FileSystemContract {};

TEST_P(FolderContract, AnOpenFolderTellsTheSameAsPathsDo) {
  world_->MakeFile(At("top/file"), "12345");
  world_->MakeFolder(At("top/folder"));
  world_->MakeLink(At("top/link"), "file");
  world_->MakeFile(At("top/.secret"), "1");
  world_->Hide(At("top/.secret"));
  world_->MakeLink(At("to top"), "top");
  // One text without ends between the names, as in a listing.
  const std::string text = "filefolderlink.secret";
  const auto name = [&](std::size_t from, std::size_t length) { return std::string_view(text).substr(from, length); };
  for (const char* path : {"top", "top/", "to top"}) {
    const auto folder = OpenFolder(At(path));
    ASSERT_NE(folder, nullptr);
    for (const std::string_view entry : {name(0, 4), name(4, 6), name(10, 4), name(14, 7)}) {
      FileStat stat;
      ASSERT_EQ(folder->Stat(entry, stat), Errors::None) << entry;
      const FileStat alone = Stat(At("top/" + std::string(entry)));
      EXPECT_EQ(stat.kind, alone.kind);
      EXPECT_EQ(stat.hidden, alone.hidden);
      EXPECT_EQ(stat.size, alone.size);
      EXPECT_EQ(stat.modified, alone.modified);
      EXPECT_EQ(stat.changedNs, alone.changedNs);
      EXPECT_EQ(stat.links, alone.links);
      EXPECT_EQ(stat.identity, alone.identity);
      EXPECT_EQ(stat.hidden, entry == ".secret");
    }
    Errors failure = Errors::Device;
    const auto reader = folder->Open(name(0, 4), failure);
    ASSERT_NE(reader, nullptr);
    EXPECT_EQ(failure, Errors::None);
    EXPECT_EQ(Read(*reader, 0, 9), "12345");
  }
}

TEST_P(FolderContract, AnOpenFolderRefusesWhatItHasNotOrCannotHave) {
  world_->MakeFile(At("top/file"), "");
  world_->MakeFolder(At("top/folder"));
  world_->MakeLink(At("top/link"), "file");
  const auto folder = OpenFolder(At("top"));
  ASSERT_NE(folder, nullptr);
  const auto statFailure = [&](std::string_view name) {
    FileStat stat;
    return folder->Stat(name, stat);
  };
  const auto openFailure = [&](std::string_view name) {
    Errors failure = Errors::None;
    EXPECT_EQ(folder->Open(name, failure), nullptr) << name;
    return failure;
  };
  EXPECT_EQ(statFailure("missing"), Errors::FileNotFound);
  EXPECT_EQ(openFailure("missing"), Errors::FileNotFound);
  EXPECT_EQ(openFailure("folder"), Errors::PathAccess);
  EXPECT_EQ(openFailure("link"), Errors::PathAccess);
  for (const std::string& impossible : {std::string(256, 'n'), std::string(70'000, 'n'), std::string("file\0x", 6)}) {
    EXPECT_EQ(statFailure(impossible), Errors::BadFileName);
    EXPECT_EQ(openFailure(impossible), Errors::BadFileName);
  }
}

TEST_P(FolderContract, AnOpenFolderStaysTheSameWhereverItsPathLeads) {
  world_->MakeFile(At("one/file"), "12345");
  world_->MakeFile(At("two/file"), "1");
  world_->MakeLink(At("way"), "one");
  const auto folder = OpenFolder(At("way"));
  ASSERT_NE(folder, nullptr);
  world_->Remove(At("way"));
  world_->MakeLink(At("way"), "two");
  FileStat stat;
  ASSERT_EQ(folder->Stat("file", stat), Errors::None);
  EXPECT_EQ(stat.size, 5);
  Errors failure = Errors::None;
  const auto reader = folder->Open("file", failure);
  ASSERT_NE(reader, nullptr);
  EXPECT_EQ(reader->Size(), 5);
}

TEST_P(FolderContract, LinksOfAPathAreFollowedWhereAskedFor) {
  world_->MakeFile(At("top/file"), "12345");
  world_->MakeLink(At("link"), "top" + Separator() + "file");
  world_->MakeLink(At("broken"), "missing");
  EXPECT_EQ(OpenFailure(At("link")), Errors::PathAccess);
  EXPECT_EQ(Content(files_.Resolved(At("link"))), "12345");
  EXPECT_EQ(Content(files_.Resolved(At("top/file"))), "12345");
  EXPECT_EQ(files_.Resolved(At("missing")), At("missing"));
  EXPECT_EQ(OpenFailure(files_.Resolved(At("broken"))), Errors::FileNotFound);
}

TEST_P(FolderContract, WhatIsNoFolderCannotBeOpenedAsOne) {
  world_->MakeFile(At("file"), "");
  EXPECT_EQ(OpenFolderFailure(At("missing")), Errors::FileNotFound);
  EXPECT_EQ(OpenFolderFailure(At("file")), Errors::PathAccess);
}

INSTANTIATE_TEST_SUITE_P(All, FolderContract, AllImplementations(), NameOf);

}  // namespace

}  // namespace tresmor
