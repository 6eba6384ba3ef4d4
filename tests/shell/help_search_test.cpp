#include "shell/help_search.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(PlainText, IsWhatOneReads) {
  EXPECT_EQ(PlainText("<html><head><title>No</title></head><body>A<b>dd&gt;</b> &lt;&amp;&quot;&nbsp;x</body>"),
            "  A dd>  <&\" x ");
  EXPECT_EQ(PlainText("&amp;lt; stays"), "&lt; stays");
  EXPECT_EQ(PlainText("cut <b"), "cut  ");
  EXPECT_EQ(PlainText(""), "");
}

class HelpSearchTest : public testing::Test {
 protected:
  HelpSearchTest() {
    search.Add("Marks", "<p>Smart Marker marks files.</p>");
    search.Add("Deleting", "<p>Files that have marks. Marks, and marks again.</p>");
    search.Add("Keys", "<p>Ctrl+K. <b>Gr\xC3\xBC\xC3\x9F</b>e. Marked *.jpg; --quiet</p>");
  }
  HelpSearch search;
};

TEST_F(HelpSearchTest, AllPagesInTheirOrderWithoutAWord) {
  EXPECT_THAT(search.Find(""), ElementsAre(0, 1, 2));
  EXPECT_THAT(search.Find(" *.; "), ElementsAre(0, 1, 2));
  EXPECT_TRUE(HelpSearch().IsEmpty());
  EXPECT_FALSE(search.IsEmpty());
}

TEST_F(HelpSearchTest, TheBeginningOfAWordInAnyCaseDoes) {
  EXPECT_THAT(search.Find("SMART"), ElementsAre(0));
  EXPECT_THAT(search.Find("dele"), ElementsAre(1));
  EXPECT_THAT(search.Find("gr\xC3\x9C"), ElementsAre(2));
  EXPECT_THAT(search.Find("arks"), IsEmpty());
}

TEST_F(HelpSearchTest, AllWordsMustBeThere) {
  EXPECT_THAT(search.Find("files smart"), ElementsAre(0));
  EXPECT_THAT(search.Find("files nowhere"), IsEmpty());
  EXPECT_THAT(search.Find("*.jpg --quiet"), ElementsAre(2));
}

TEST_F(HelpSearchTest, ATitleCountsForTen) {
  EXPECT_THAT(search.Find("marks"), ElementsAre(0, 1));
  EXPECT_THAT(search.Find("mark"), ElementsAre(0, 1, 2));
  search.Add("Many", "marks marks marks marks marks marks marks marks marks marks marks marks marks");
  EXPECT_THAT(search.Find("marks"), ElementsAre(3, 0, 1));
}

TEST_F(HelpSearchTest, OfPagesThatSayAsMuchTheFirstComesFirst) { EXPECT_THAT(search.Find("files"), ElementsAre(0, 1)); }

}  // namespace
}  // namespace tresmor
