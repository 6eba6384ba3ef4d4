// What becomes of a failure that a box is to tell.
#include "desk/report_failure.h"

#include <gtest/gtest.h>

#include <new>

#include "support/scripted_dialogs.h"

namespace tresmor {
namespace {

TEST(ReportFailure, TellsFileWorkBySentenceNumberAndDescription) {
  ScriptedDialogs dialogs;
  dialogs.boxes = {{.text = "It failed. \r\nError : #61 Disk full", .title = "Failed"}};
  ReportFailure(dialogs, "It failed. ", Failure(Errors::DiskFull));
}

TEST(ReportFailure, TellsARunTimeErrorUnderTheProgramsName) {
  ScriptedDialogs dialogs;
  dialogs.boxes = {{.text = "Run-time error '9':\r\n\r\nno such row", .title = ""}};
  ReportRunTimeError(dialogs, Failure(Errors::Subscript, "no such row"));
}

// An unexpected box fails the test, and so does one that doesn't come.
TEST(DoOrReport, GivesWhatTheStepGives) {
  ScriptedDialogs dialogs;
  EXPECT_TRUE(DoOrReport(dialogs, "No luck.", [] { return true; }));
  EXPECT_FALSE(DoOrReport(dialogs, "No luck.", [] { return false; }));
}

TEST(DoOrReport, TellsAFailure) {
  ScriptedDialogs dialogs;
  dialogs.boxes = {{.text = "No luck.\r\nError : #61 Disk full", .title = "Failed"}};
  EXPECT_FALSE(DoOrReport(dialogs, "No luck.", []() -> bool { throw Failure(Errors::DiskFull); }));
}

TEST(DoOrReport, TellsALackOfMemory) {
  ScriptedDialogs dialogs;
  dialogs.boxes = {{.text = "No luck.\r\nError : #7 Out of memory", .title = "Failed"}};
  EXPECT_FALSE(DoOrReport(dialogs, "No luck.", []() -> bool { throw std::bad_alloc(); }));
}

}  // namespace
}  // namespace tresmor
