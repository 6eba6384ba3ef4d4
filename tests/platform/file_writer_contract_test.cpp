// What any FileWriter promises, whatever the files are.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "platform/file_system_contract.h"

namespace tresmor {

namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

class FileWriterContract : public FileSystemContract {
 protected:
  Errors Replace(const std::string& path, const std::string& bytes) const {
    return world_->Writer().Replace(At(path), bytes);
  }
  Errors MakeFolder(const std::string& path) const { return world_->Writer().MakeFolder(At(path)); }
};

TEST_P(FileWriterContract, MakesAFileOfAnyBytes) {
  const std::string bytes("a\0\r\n\xFF", 5);
  EXPECT_EQ(Replace("file", bytes), Errors::None);
  EXPECT_EQ(Content(At("file")), bytes);
  EXPECT_EQ(Replace("empty", ""), Errors::None);
  EXPECT_EQ(Stat(At("empty")).size, 0);
  EXPECT_THAT(Names(world_->Root()), UnorderedElementsAre("file", "empty"));
}

TEST_P(FileWriterContract, TakesTheOldFilesPlace) {
  world_->MakeFile(At("file"), "a longer old content");
  EXPECT_EQ(Replace("file", "new"), Errors::None);
  EXPECT_EQ(Content(At("file")), "new");
  EXPECT_THAT(Names(world_->Root()), ElementsAre("file"));
}

TEST_P(FileWriterContract, WritesThroughLinks) {
  world_->MakeFile(At("folder/file"), "old");
  world_->MakeLink(At("folder/near"), "file");
  world_->MakeLink(At("far"), At("folder/near"));
  EXPECT_EQ(Replace("far", "new"), Errors::None);
  EXPECT_EQ(Content(At("folder/file")), "new");
  EXPECT_EQ(Stat(At("far")).kind, EntryKind::Other);
  EXPECT_EQ(Stat(At("folder/near")).kind, EntryKind::Other);
}

TEST_P(FileWriterContract, RefusesWhatIsNoFile) {
  world_->MakeFolder(At("folder"));
  world_->MakeFifo(At("fifo"));
  world_->MakeLink(At("circle"), At("circle"));
  for (const char* path : {"folder", "fifo", "circle"}) {
    EXPECT_EQ(Replace(path, "x"), Errors::PathAccess) << path;
  }
  EXPECT_EQ(Replace("missing/file", "x"), Errors::FileNotFound);
}

TEST_P(FileWriterContract, MakesTheFileThatALinkLeadsTo) {
  world_->MakeFolder(At("folder"));
  world_->MakeLink(At("folder/near"), "nothing");
  world_->MakeLink(At("far"), At("folder/near"));
  world_->MakeLink(At("lost"), At("missing/file"));
  EXPECT_EQ(Replace("far", "new"), Errors::None);
  EXPECT_EQ(Content(At("folder/nothing")), "new");
  EXPECT_EQ(Stat(At("far")).kind, EntryKind::Other);
  EXPECT_EQ(Stat(At("folder/near")).kind, EntryKind::Other);
  EXPECT_EQ(Replace("lost", "new"), Errors::FileNotFound);
}

TEST_P(FileWriterContract, AReadOnlyFileStaysAsItIs) {
  world_->MakeFile(At("file"), "old");
  world_->WithoutWriting(At("file"), [&] { EXPECT_EQ(Replace("file", "new"), Errors::PermissionDenied); });
  EXPECT_EQ(Content(At("file")), "old");
  EXPECT_THAT(Names(world_->Root()), ElementsAre("file"));
}

TEST_P(FileWriterContract, NothingIsMadeInAFolderWithoutAccess) {
  world_->MakeFolder(At("folder"));
  world_->WithoutAccess(At("folder"), [&] { EXPECT_EQ(Replace("folder/file", "x"), Errors::PermissionDenied); });
  EXPECT_THAT(Names(At("folder")), ElementsAre());
}

TEST_P(FileWriterContract, MakesFoldersWithThoseAbove) {
  EXPECT_EQ(MakeFolder("a/b/c"), Errors::None);
  EXPECT_EQ(Stat(At("a/b/c")).kind, EntryKind::Folder);
  EXPECT_EQ(MakeFolder("a/b/c/"), Errors::None);
  EXPECT_EQ(MakeFolder(""), Errors::None);
  world_->MakeFile(At("file"), "");
  EXPECT_EQ(MakeFolder("file/x"), Errors::PathAccess);
  EXPECT_EQ(MakeFolder("file"), Errors::PathAccess);
}

TEST_P(FileWriterContract, APathMayBeLongerThanOneCallTakes) {
  std::string folder = "0";
  for (int i = 1; i < 700; ++i) folder += "/level" + std::to_string(i);
  const std::string file = folder + "/file";
  ASSERT_GT(file.size(), 5000U);
  EXPECT_EQ(Replace(file, "x"), Errors::FileNotFound);
  EXPECT_EQ(MakeFolder(folder), Errors::None);
  EXPECT_EQ(MakeFolder(folder), Errors::None);
  EXPECT_EQ(Replace(file, "first"), Errors::None);
  EXPECT_EQ(Content(At(file)), "first");
  world_->MakeLink(At(folder + "/link"), "file");
  EXPECT_EQ(Replace(folder + "/link", "second"), Errors::None);
  EXPECT_EQ(Content(At(file)), "second");
  EXPECT_EQ(Replace(folder, "x"), Errors::PathAccess);
  EXPECT_THAT(Names(At(folder)), ElementsAre("file", "link"));
}

INSTANTIATE_TEST_SUITE_P(All, FileWriterContract, AllImplementations(), NameOf);

}  // namespace

}  // namespace tresmor
