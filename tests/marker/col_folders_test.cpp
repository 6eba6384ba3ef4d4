#include "marker/col_folders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/failure.h"
#include "results/result_lists.h"
#include "results/rows.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> FoldersOf(PathStyle style, const std::vector<const char*>& paths) {
  ColFolders colFolders(style);
  for (const char* const path : paths) AddFolderPath(path, colFolders);
  return colFolders.Folders();
}

TEST(AddFolderPath, AddsTheFolderAndAllAroundItNearestFirst) {
  EXPECT_THAT(FoldersOf(PathStyle::Windows(), {R"(C:\a\b\)"}), ElementsAre(R"(C:\a\b\)", R"(C:\a\)", R"(C:\)"));
  EXPECT_THAT(FoldersOf(PathStyle::Posix(), {"/a/b/"}), ElementsAre("/a/b/", "/a/", "/"));
}

TEST(AddFolderPath, EndsAtADriveAndAtAComputer) {
  EXPECT_THAT(FoldersOf(PathStyle::Windows(), {R"(D:\x\)"}), ElementsAre(R"(D:\x\)", R"(D:\)"));
  EXPECT_THAT(FoldersOf(PathStyle::Windows(), {R"(\\srv\share\d\)"}),
              ElementsAre(R"(\\srv\share\d\)", R"(\\srv\share\)", R"(\\srv\)"));
  EXPECT_THAT(FoldersOf(PathStyle::Windows(), {R"(\\srv\share\)"}), ElementsAre(R"(\\srv\share\)", R"(\\srv\)"));
  EXPECT_THAT(FoldersOf(PathStyle::Windows(), {R"(\\)", "C:", ""}), IsEmpty());
}

TEST(AddFolderPath, OfARootIsTheRoot) {
  EXPECT_THAT(FoldersOf(PathStyle::Windows(), {R"(C:\)"}), ElementsAre(R"(C:\)"));
  EXPECT_THAT(FoldersOf(PathStyle::Posix(), {"/", ""}), ElementsAre("/"));
}

TEST(AddFolderPath, StopsAtWhatIsThereAlready) {
  EXPECT_THAT(FoldersOf(PathStyle::Posix(), {"/a/b/", "/a/c/d/", "/a/b/"}),
              ElementsAre("/a/b/", "/a/", "/", "/a/c/d/", "/a/c/"));
}

TEST(AddFolderPath, TellsFoldersApartAsTheSystemDoes) {
  EXPECT_THAT(FoldersOf(PathStyle::Windows(), {R"(C:\A\)", R"(c:\a\)"}), ElementsAre(R"(C:\A\)", R"(C:\)"));
  EXPECT_THAT(FoldersOf(PathStyle::Posix(), {"/A/", "/a/"}), ElementsAre("/A/", "/", "/a/"));
}

class SelectFoldersOfTest : public testing::Test {
 protected:
  SelectFoldersOfTest() { lstFolder.AddColumn({"Folders"}); }

  void AddFile(const std::string& folder, bool selected) {
    Finding finding;
    finding.folder = folder;
    finding.name = "f";
    AddResultItem(lst, finding);
    lst.SetSelected(lst.Count(), selected);
  }
  std::vector<std::string> Selected() const {
    std::vector<std::string> selected;
    for (std::int32_t row = 1; row <= lstFolder.Count(); ++row) {
      if (lstFolder.Selected(row)) selected.push_back(lstFolder.Cell(row, 0));
    }
    return selected;
  }

  Panel panel;
  ResultLists results{panel};
  ListView& lst = results.Shown();
  ListView lstFolder;
};

TEST_F(SelectFoldersOfTest, SelectsThoseOfSelectedRowsAndLeavesTheOthers) {
  for (const char* const folder : {"/a/", "/", "/b/", "/c/"}) lstFolder.AddRow(folder);
  lstFolder.SetSelected(4, true);
  AddFile("/a/", true);
  AddFile("/b/", false);
  AddFile("/elsewhere/", true);
  SelectFoldersOf(lst, lstFolder, PathStyle::Posix());
  EXPECT_THAT(Selected(), ElementsAre("/a/", "/c/"));
}

TEST_F(SelectFoldersOfTest, FindsThemAsTheSystemDoes) {
  for (const char* const folder : {"/A/", "/a/"}) lstFolder.AddRow(folder);
  AddFile("/a/", true);
  SelectFoldersOf(lst, lstFolder, PathStyle::Posix());
  EXPECT_THAT(Selected(), ElementsAre("/a/"));
  SelectFoldersOf(lst, lstFolder, {'/', true});
  EXPECT_THAT(Selected(), ElementsAre("/A/", "/a/"));
}

TEST_F(SelectFoldersOfTest, CountsRowsIn16Bits) {
  for (int i = 1; i <= 32768; ++i) lstFolder.AddRow("/" + std::to_string(i) + "/");
  AddFile("/32767/", true);
  SelectFoldersOf(lst, lstFolder, PathStyle::Posix());
  EXPECT_THAT(Selected(), ElementsAre("/32767/"));
  AddFile("/32768/", true);
  EXPECT_THROW(SelectFoldersOf(lst, lstFolder, PathStyle::Posix()), Failure);
}

TEST_F(SelectFoldersOfTest, TellsOfAllByOneNoticeAlsoWhereItFailsMidway) {
  for (int i = 1; i <= 32768; ++i) lstFolder.AddRow("/" + std::to_string(i) + "/");
  int told = 0;
  lstFolder.Listen([&](const Notice& notice) {
    told += notice.what == Notice::What::RowsChanged && notice.when == Notice::When::After;
  });
  for (const char* const folder : {"/1/", "/2/", "/3/"}) AddFile(folder, true);
  SelectFoldersOf(lst, lstFolder, PathStyle::Posix());
  EXPECT_EQ(told, 1);
  for (const char* const folder : {"/4/", "/5/", "/32768/", "/6/"}) AddFile(folder, true);
  EXPECT_THROW(SelectFoldersOf(lst, lstFolder, PathStyle::Posix()), Failure);
  EXPECT_EQ(told, 2);
  EXPECT_THAT(Selected(), ElementsAre("/1/", "/2/", "/3/", "/4/", "/5/"));
}

}  // namespace
}  // namespace tresmor
