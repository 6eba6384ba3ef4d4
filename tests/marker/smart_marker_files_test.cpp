// The rules that mark single files: by folder and by name.
#include <gmock/gmock.h>

#include "marker/smart_marker_world.h"

namespace tresmor {
namespace {

using testing::IsEmpty;
using tests::SmartMarkerTest;

TEST_F(SmartMarkerTest, MarksTheFilesOfSelectedFoldersAndBelow) {
  for (const char* path : {"/a/1", "/a/b/2", "/ab/3", "/A/4", "/c/5"}) Add({path});
  AddFolder("/a/");
  AddFolder("/c/", false);
  KeepNone();
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marked(), "1 2 ");
}

TEST_F(SmartMarkerTest, MarksTheFilesOfSelectedFoldersAlone) {
  for (const char* path : {"/a/1", "/a/b/2", "/c/d/3", "/c/4"}) Add({path});
  AddFolder("/a/");
  AddFolder("/c/d/");
  frm.chkSubFolder.Value = false;
  KeepNone();
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marked(), "1 3 ");
}

TEST_F(SmartMarkerTest, FoldersAloneAreToldApartByCaseToo) {
  for (const char* path : {"/a/1", "/A/2"}) Add({path});
  AddFolder("/A/");
  frm.chkSubFolder.Value = false;
  KeepNone();
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marked(), "2 ");
}

TEST_F(SmartMarkerTest, ARootTakesEverythingBelowIt) {
  for (const char* path : {"/1", "/a/b/2"}) Add({path});
  AddFolder("/");
  AddFolder("/zzz/zzz/");
  KeepNone();
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marks(), "xx");
}

TEST_F(SmartMarkerTest, MarksNamesByPatterns) {
  for (const char* name : {"photo.jpg", "Apple.txt", "photo.jpg.bak", "b.txt"}) Add({std::string("/a.d/") + name});
  frm.cmbPattern.SetText("*.JPG; a*");
  KeepNone();
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marked(), "photo.jpg Apple.txt ");
}

TEST_F(SmartMarkerTest, EmptyPatternsMarkNothing) {
  Add({"/d/b"});
  Add({"/d/"});  // a name that is empty
  KeepNone();
  for (const char* pattern : {"", ";", "  ", "a; ;"}) {
    frm.cmbPattern.SetText(pattern);
    EXPECT_TRUE(Run());
    EXPECT_EQ(Marks(), "--") << pattern;
  }
}

TEST_F(SmartMarkerTest, AdditiveRulesLeaveOtherMarks) {
  for (const char* path : {"/a/1", "/b/2", "/c/3"}) Add({path});
  duplicates.SetChecked(3, true);
  AddFolder("/a/");
  frm.cmbPattern.SetText("2");
  KeepNone();
  EXPECT_TRUE(Run());
  EXPECT_EQ(Marks(), "xxx");
}

TEST_F(SmartMarkerTest, AnIllFormedPatternStopsTheRun) {
  for (const char* name : {"1", "2", "3"}) Add({std::string("/d/") + name});
  frm.cmbPattern.SetText("1;[2;3");
  frm.lstDate.Choose(1);
  dialogs.boxes = {{.text = "Run-time error '93':\r\n\r\nInvalid pattern string", .title = ""}};
  EXPECT_FALSE(Run());
  EXPECT_EQ(Marks(), "x--");
  EXPECT_EQ(duplicates.Count(), 3);
  EXPECT_THAT(settings.saved, IsEmpty());
  EXPECT_THAT(PatternList(), IsEmpty());
  EXPECT_TRUE(tmrUpdate.Enabled());
}

TEST_F(SmartMarkerTest, FoldersAreMarkedBeforeAnIllFormedPatternStopsTheRun) {
  for (const char* path : {"/a/1", "/b/2"}) Add({path});
  AddFolder("/b/");
  frm.cmbPattern.SetText("[");
  dialogs.boxes = {{.text = "Run-time error '93':\r\n\r\nInvalid pattern string", .title = ""}};
  EXPECT_FALSE(Run());
  EXPECT_EQ(Marks(), "-x");
}

}  // namespace
}  // namespace tresmor
