#include "results/rows.h"

#include "results/result_fixture.h"

namespace tresmor {
namespace {

class RowsTest : public tests::ResultFixture {};

TEST_F(RowsTest, ARowHoldsNameFolderGroupSizeAndDate) {
  const Finding finding{.list = ResultList::Duplicates,
                        .name = "a.txt",
                        .folder = "C:\\",
                        .dupGrp = 17,
                        .size = 4096,
                        .modified = *ParseStamp("2003/07/02 10:11:12"),
                        .version = std::nullopt};
  AddResultItem(duplicates, finding);
  ASSERT_EQ(duplicates.Count(), 1);
  EXPECT_EQ(duplicates.Cell(1, kNameItem), "a.txt");
  EXPECT_EQ(duplicates.Cell(1, kFolderItem), "C:\\");
  EXPECT_EQ(duplicates.Cell(1, kDupGrpItem), "        17");
  EXPECT_EQ(duplicates.Cell(1, kSizeItem), "      4096");
  EXPECT_EQ(duplicates.Cell(1, kDateItem), "2003/07/02 10:11:12");
  EXPECT_EQ(duplicates.SubItems(1), 4);
  EXPECT_FALSE(duplicates.Checked(1));
  EXPECT_FALSE(duplicates.Selected(1));
  EXPECT_EQ(duplicates.ForeColor(1), kWindowText);
  EXPECT_EQ(duplicates.Tag(), "");
}

TEST_F(RowsTest, NoGroupIsOneBlankAndAReadErrorIsPadded) {
  Add(ResultList::ZeroSize, "none", -1);
  Add(ResultList::ReadErrors, "error", -3);
  Add(ResultList::Duplicates, "first", 0);
  EXPECT_EQ(zero.Cell(1, kDupGrpItem), " ");
  EXPECT_EQ(errors.Cell(1, kDupGrpItem), "        -3");
  EXPECT_EQ(duplicates.Cell(1, kDupGrpItem), "         0");
}

TEST_F(RowsTest, ASizeOfTenDigitsFillsItsCellAndALongerOneStandsUnpadded) {
  Add(ResultList::Duplicates, "a", 0, 2147483647);
  Add(ResultList::Duplicates, "b", 0, 123456789012);
  EXPECT_EQ(duplicates.Cell(1, kSizeItem), "2147483647");
  EXPECT_EQ(duplicates.Cell(2, kSizeItem), "123456789012");
}

TEST_F(RowsTest, TheZeroDateIsShownAsItIs) {
  Add(ResultList::ZeroSize, ".hidden");
  EXPECT_EQ(zero.Cell(1, kDateItem), "1899/12/30 00:00:00");
}

TEST_F(RowsTest, EqualNamesOfOneGroupDifferInTheirFoldersAlone) {
  for (const char* folder : {"/a/", "/b/"}) {
    Finding finding;
    finding.name = "same";
    finding.folder = folder;
    finding.dupGrp = 3;
    AddResultItem(duplicates, finding);
  }
  EXPECT_EQ(Texts(duplicates, kFolderItem), (std::vector<std::string>{"/a/", "/b/"}));
  for (const std::int16_t item : {kNameItem, kDupGrpItem, kSizeItem, kDateItem}) {
    EXPECT_TRUE(duplicates.SameCell(1, 2, item));
  }
}

TEST_F(RowsTest, AVersionBringsItsKeyAndTheListsTag) {
  AddVersion(ResultList::SameName, "a.exe", "1.10");
  AddVersion(ResultList::SameName, "b.txt", "");
  EXPECT_EQ(sameName.Cell(1, kVersionItem), "1.10");
  EXPECT_EQ(sameName.CellTag(1, kVersionItem), "00010010");
  EXPECT_EQ(sameName.SubItems(2), 5);
  EXPECT_EQ(sameName.CellTag(2, kVersionItem), "");
  EXPECT_EQ(sameName.Tag(), "Ver");
  EXPECT_EQ(duplicates.Tag(), "");
}

TEST_F(RowsTest, NamesComeBackByteForByte) {
  const std::string name = "caf\xE9 <b>\n         7";
  Add(ResultList::Duplicates, name, 0);
  EXPECT_EQ(duplicates.Cell(1, kNameItem), name);
}

TEST_F(RowsTest, AListOfOneRowIsNotColoured) {
  ColorGroups(duplicates, ResultList::Duplicates);
  Add(ResultList::Duplicates, "a", 0);
  ColorGroups(duplicates, ResultList::Duplicates);
  EXPECT_EQ(duplicates.ForeColor(1), kWindowText);
}

TEST_F(RowsTest, TwoGroupsHaveTheFirstTwoColours) {
  Add(ResultList::Portions, "a", 0);
  Add(ResultList::Portions, "b", 5);
  ColorGroups(portions, ResultList::Portions);
  EXPECT_EQ(Colors(portions), (std::vector<std::uint32_t>{0x009933, 0x0033CC}));
}

TEST_F(RowsTest, AllRowsAreColouredInOneChange) {
  for (const char* name : {"a", "b", "c"}) Add(ResultList::Duplicates, name, 1);
  int changes = 0;
  duplicates.Listen([&](const Notice& notice) { changes += notice.when == Notice::When::After ? 1 : 0; });
  ColorGroups(duplicates, ResultList::Duplicates);
  EXPECT_EQ(changes, 1);
}

TEST_F(RowsTest, TheSeventhGroupHasTheColourOfTheFirst) {
  for (std::int32_t group = 0; group < 7; ++group) {
    Add(ResultList::Duplicates, "a", group);
    Add(ResultList::Duplicates, "b", group);
  }
  ColorGroups(duplicates, ResultList::Duplicates);
  const std::vector<std::uint32_t> expected = {0x009933, 0x009933, 0x0033CC, 0x0033CC, 0xFF9900, 0xFF9900, 0xCC0000,
                                               0xCC0000, 0x9933FF, 0x9933FF, 0x000000, 0x000000, 0x009933, 0x009933};
  EXPECT_EQ(Colors(duplicates), expected);
}

TEST_F(RowsTest, ColoursCycleThroughMoreGroupsThanSixteenBitsCount) {
  for (std::int32_t group = 0; group < 40000; ++group) Add(ResultList::Duplicates, "a", group);
  ColorGroups(duplicates, ResultList::Duplicates);
  for (std::int32_t row = 1; row <= 40000; row += 777) {
    EXPECT_EQ(duplicates.ForeColor(row), GroupColors[static_cast<std::size_t>((row - 1) % 6)]);
  }
}

TEST_F(RowsTest, SameNamesGroupWithoutRegardToCaseAndWhateverTheNumber) {
  Add(ResultList::SameName, "Read.me");
  Add(ResultList::SameName, "READ.ME", 7);
  Add(ResultList::SameName, "other");
  ColorGroups(sameName, ResultList::SameName);
  EXPECT_EQ(Colors(sameName), (std::vector<std::uint32_t>{0x009933, 0x009933, 0x0033CC}));
}

TEST_F(RowsTest, GroupNumbersAreComparedAsExactTexts) {
  Add(ResultList::Duplicates, "same", 7);
  Add(ResultList::Duplicates, "same", 7);
  duplicates.SetCell(2, kDupGrpItem, "7");  // as a session file may have it
  EXPECT_FALSE(SameGroup(duplicates, ResultList::Duplicates, 1, 2));
  duplicates.SetCell(2, kDupGrpItem, "         7");
  EXPECT_TRUE(SameGroup(duplicates, ResultList::Duplicates, 1, 2));
}

}  // namespace
}  // namespace tresmor
