// What a search refuses to begin without.
#include "shell/search_checks.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/failure.h"
#include "search/scope_row.h"
#include "support/failure_of.h"

namespace tresmor {
namespace {

class SearchChecksTest : public testing::Test {
 protected:
  void AddRow(int icon, const std::string& searchTarget) {
    const std::vector<CellValue> cells = {"Yes", "", "", "", searchTarget};
    frm.lstPath.SetSmallIcon(frm.lstPath.AddRow("/data/*.*", cells), icon);
  }
  void TickNone() {
    for (std::int32_t i = 0; i < frm.lstSrchType.Count(); ++i) frm.lstSrchType.SetTicked(i, false);
  }
  void ExpectMissing(const std::string& title, const std::string& text) {
    const auto missing = FailedSearchCheck(frm);
    ASSERT_TRUE(missing);
    EXPECT_EQ(missing->title, title);
    EXPECT_EQ(missing->text, text);
  }
  FrmMain frm;
};

TEST_F(SearchChecksTest, TheFirstThatFailsIsTold) {
  TickNone();
  ExpectMissing("Select Path", "Please select path before search. Remember to click [Add>] to add path.");
  AddRow(ScopeRow::kExcluded, "");
  ExpectMissing("Select Search Type", "Please select at least one search type.");
  frm.lstSrchType.SetTicked(3, true);
  ExpectMissing("At least one included path required",
                "Please include at least one path before search.\r\n\r\nYou can select included path by unchecking "
                "'Exclude' in tab 'Scope' and then click button [Add]. ");
  AddRow(ScopeRow::kIncluded, "No");
  ExpectMissing("At least one search target path required",
                "Please select at least one search target path before search.\r\n\r\nYou can select 'Search Target' in "
                "tab 'Scope' and then click button [Add]. ");
  AddRow(ScopeRow::kIncluded, "Yes");
  EXPECT_FALSE(FailedSearchCheck(frm));
}

TEST_F(SearchChecksTest, TypesAreTickedWhereverTheyStand) {
  TickNone();
  EXPECT_FALSE(AtLeast1Chk(frm.lstSrchType));
  for (std::int32_t i = 0; i < frm.lstSrchType.Count(); ++i) {
    TickNone();
    frm.lstSrchType.SetTicked(i, true);
    EXPECT_TRUE(AtLeast1Chk(frm.lstSrchType)) << i;
  }
  EXPECT_FALSE(AtLeast1Chk(CheckList({})));
}

// Rows are told apart by their icons, targets by their cells alone.
TEST_F(SearchChecksTest, AnOddExcludedRowCountsAsTarget) {
  AddRow(ScopeRow::kExcluded, "Yes");
  ASSERT_TRUE(FailedSearchCheck(frm));
  AddRow(ScopeRow::kIncluded, "No");
  EXPECT_FALSE(FailedSearchCheck(frm));
}

TEST_F(SearchChecksTest, MoreRowsThanSixteenBitsCountFail) {
  for (int i = 0; i < 32'768; ++i) AddRow(ScopeRow::kIncluded, "Yes");
  EXPECT_EQ(tests::FailureOf([&] { FailedSearchCheck(frm); }), Errors::Overflow);
}

}  // namespace
}  // namespace tresmor
