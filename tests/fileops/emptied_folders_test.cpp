#include "fileops/emptied_folders.h"

#include <gtest/gtest.h>

#include "fileops/fileops_world.h"

namespace tresmor {
namespace {

class EmptiedFoldersTest : public testing::Test, protected tests::FileOpsWorld {
 protected:
  EmptiedFoldersTest() {
    for (const char* path : {"/d/a", "/d/b", "/d/sub/c", "/e/a"}) files.MakeFile(path, "x");
  }
  // Which of the folders "/d", "/d/sub" and "/e" there are.
  std::string Emptied(const std::vector<std::string>& paths, const BroughtTo& broughtTo = {}) {
    const EmptiedFolders emptied = FoldersToEmpty(paths, files, shell, broughtTo);
    std::string found;
    for (const char* folder : {"/d", "/d/sub", "/e"}) {
      FileStat stat;
      EXPECT_EQ(files.Stat(folder, stat), Errors::None);
      if (emptied.contains({stat.identity.device, stat.identity.inode})) found += std::string(folder) + " ";
    }
    EXPECT_EQ(static_cast<std::size_t>(std::count(found.begin(), found.end(), ' ')), emptied.size());
    return found;
  }
};

TEST_F(EmptiedFoldersTest, AllFilesOfAFolderMustGoAndSubFoldersAreNoMatter) {
  EXPECT_EQ(Emptied({"/d/a", "/d/b"}), "/d ");
  EXPECT_EQ(Emptied({"/d/a"}), "");
  EXPECT_EQ(Emptied({"/d/a", "/d/sub/c", "/e/a"}), "/d/sub /e ");
  EXPECT_EQ(Emptied({}), "");
}

TEST_F(EmptiedFoldersTest, WhatIsNoFolderKeepsAFolder) {
  files.MakeLink("/e/link", "nowhere");
  EXPECT_EQ(Emptied({"/e/a"}), "");
}

TEST_F(EmptiedFoldersTest, AFolderIsOneByAllItsPaths) {
  files.MakeLink("/link", "/d");
  EXPECT_EQ(Emptied({"/d/a", "/link/b"}), "/d ");
}

// Whichever of its paths comes first.
TEST_F(EmptiedFoldersTest, AFolderGoesByAPathThatEndsInItsOwnName) {
  files.MakeLink("/a link", "/d");
  files.MakeLink("/e link", "/d");
  const std::vector<std::vector<std::string>> waysToAAndB = {
      {"/a link/a", "/d/b"}, {"/d/a", "/e link/b"}, {"/d/sub/../a", "/d/b"}, {"/d/./a", "/d/b"}};
  for (const auto& paths : waysToAAndB) {
    const EmptiedFolders emptied = FoldersToEmpty(paths, files, shell, {});
    ASSERT_EQ(emptied.size(), 1U) << paths[0];
    EXPECT_EQ(emptied.begin()->second, "/d");
  }
}

TEST_F(EmptiedFoldersTest, AFolderWithoutSuchAPathStays) {
  files.MakeLink("/link", "/e");
  EXPECT_EQ(Emptied({"/link/a"}), "");
  EXPECT_EQ(Emptied({"/d/sub/../a", "/d/./b"}), "");
  files.MakeLink("/above", "/d");
  EXPECT_EQ(Emptied({"/above/sub/c"}), "/d/sub ");
}

TEST_F(EmptiedFoldersTest, FoldersThatMustStayDo) {
  EXPECT_EQ(Emptied({"/d/a", "/d/b", "/e/a"}, {"/d/sub"}), "/e ");
  shell.kept = {"/e"};
  EXPECT_EQ(Emptied({"/d/a", "/d/b", "/e/a"}), "/d ");
}

// "/e/sub/b" is brought to "/d/e/sub/b", whose folder is yet to be made.
TEST_F(EmptiedFoldersTest, FoldersThatFilesAreBroughtIntoWithTheirFoldersStay) {
  files.MakeFile("/d/e/x", "x");
  const std::vector<std::string> paths = {"/d/e/x", "/e/a", "/e/sub/b"};  // the last isn't there
  const auto emptied = [&](const BroughtTo& broughtTo) {
    std::vector<std::string> folders;
    for (const auto& [key, path] : FoldersToEmpty(paths, files, shell, broughtTo)) folders.push_back(path);
    std::sort(folders.begin(), folders.end());
    return folders;
  };
  EXPECT_EQ(emptied({"/d", true}), (std::vector<std::string>{"/e"}));
  EXPECT_EQ(emptied({"/d", false}), (std::vector<std::string>{"/d/e", "/e"}));
  files.MakeLink("/other way", "/d");
  EXPECT_EQ(emptied({"/other way", true}), (std::vector<std::string>{"/e"}));
}

TEST_F(EmptiedFoldersTest, WhatCannotBeListedIsNotEmptied) {
  files.FailList("/e", Errors::Device);
  EXPECT_EQ(Emptied({"/e/a", "/gone/a", "/rootfile"}), "");
}

// The files of the prediction have gone, and the clean-up finds the same.
TEST_F(EmptiedFoldersTest, TheCleanUpTakesWhatWasPredicted) {
  for (const char* path : {"/d/a", "/d/b", "/e/a"}) AddRow(path);
  EXPECT_EQ(Emptied({"/d/a", "/d/b", "/e/a"}), "/d /e ");
  FrmFileProgress frm;
  FileJob job(frm, events, dialogs);
  Transfer transfer(job, preview, {files, shell, operations, dialogs});
  transfer.TransferMarked(lst, {.wFunc = FO_DELETE, .bYesToAll = true});
  transfer.RmEmptyDirs(lst, {}, true);
  EXPECT_EQ(Sources(1), (std::vector<std::string>{"/d", "/d", "/e"}));
}

}  // namespace
}  // namespace tresmor
