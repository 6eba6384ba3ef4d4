#include "cli/error_output.h"

#include <gtest/gtest.h>

#include "cli/console_world.h"

namespace tresmor {
namespace {

TEST(ErrorOutput, PrintsABoxOnOneLineWithOneBlankForEachBreak) {
  tests::Scratch scratch;
  ErrorOutput err(scratch.File(), ErrorDevice::File);
  EXPECT_EQ(err.MessageBox("One\r\ntwo:\r\n\r\nthree", BoxIcon::Critical, "", BoxButtons::Ok), BoxAnswer::Ok);
  EXPECT_EQ(scratch.Text(), "tresmor-cli: One two: three\n");
}

TEST(ErrorOutput, TellsALineEndOfABoxFromThatOfAName) {
  tests::Scratch scratch;
  ErrorOutput err(scratch.File(), ErrorDevice::File);
  err.MessageBox(BoxText("of\r\nthe\nbox: ").Name("a\r\nb\n").Words("\r\n").Name("c\x1b").Words("."), BoxIcon::Critical,
                 "", BoxButtons::Ok);
  EXPECT_EQ(scratch.Text(), "tresmor-cli: of the box: a\\r\\nb\\n c\\x1b.\n");
}

TEST(ErrorOutput, QuestionsThatNobodyCouldAnswerAreCancelled) {
  tests::Scratch scratch;
  ErrorOutput err(scratch.File(), ErrorDevice::File);
  EXPECT_EQ(err.BrowseFolder("title", "/start"), std::nullopt);
  EXPECT_EQ(err.InputBox("prompt", "title", "proposal"), "");
  EXPECT_EQ(scratch.Text(), "");
}

}  // namespace
}  // namespace tresmor
