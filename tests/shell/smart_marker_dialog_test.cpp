#include "shell/smart_marker_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "desk/history.h"
#include "results/rows.h"
#include "shell/main_window_world.h"
#include "support/history_boxes.h"

namespace tresmor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class SmartMarkerDialogTest : public testing::Test {
 protected:
  SmartMarkerDialogTest() { Select(ResultList::Duplicates); }

  void Select(ResultList kind) { frm.results.tabMain.Select(static_cast<std::int32_t>(kind) + 1); }
  // To the list on show.
  void AddFile(const std::string& folder, const std::string& name, std::int32_t dupGrp = 1) {
    Finding finding;
    finding.folder = folder;
    finding.name = name;
    finding.dupGrp = dupGrp;
    AddResultItem(frm.results.Shown(), finding);
  }
  // Opens the dialog, in which the user does this.
  void Show(std::function<void(FrmSmartDel&)> deed) {
    forms.inSmartDel = std::move(deed);
    MakeDialog().Show();
  }
  SmartMarkerDialog MakeDialog() {
    return {{frm, progress, options, presets, hovered},
            {.rules = {events, dialogs,
                       [this](GuardedId id) {
                         guarded.push_back(kGuardedMessages[id].Key);
                         return true;
                       }},
             .settings = settings,
             .forms = forms,
             .style = PathStyle::Posix(),
             .Help = help}};
  }
  // Marks by this pattern in a dialog of its own.
  void MarkBy(const std::string& pattern) {
    Show([&](FrmSmartDel& form) {
      form.cmbPattern.SetText(pattern);
      form.cmdMark.OnClick();
      EXPECT_FALSE(form.Visible());
    });
  }
  static std::vector<std::string> Folders(const ListView& lst, bool selected) {
    std::vector<std::string> folders;
    for (std::int32_t row = 1; row <= lst.Count(); ++row) {
      if (!selected || lst.Selected(row)) folders.push_back(lst.Cell(row, 0));
    }
    return folders;
  }
  static std::vector<std::string> Folders(const FrmSmartDel& form) { return Folders(form.lstFolder, false); }
  static std::vector<std::string> Selected(const FrmSmartDel& form) { return Folders(form.lstFolder, true); }
  std::string Kept(int key) const { return settings.Get(kAppTitle, kPatternHistory, std::to_string(key), "-"); }
  std::string Marks() const {
    std::string marks;
    for (std::int32_t row = 1; row <= frm.results.Shown().Count(); ++row) {
      marks += frm.results.Shown().Checked(row) ? 'x' : '-';
    }
    return marks;
  }
  // How often the control tells of such a change meanwhile.
  static int Notices(Control& control, Notice::What what, const std::function<void()>& deed) {
    const auto notices = std::make_shared<int>(0);
    control.Listen([notices, what](const Notice& notice) {
      *notices += notice.what == what && notice.when == Notice::When::After;
    });
    deed();
    return *notices;
  }
  static int Focusings(Control& control, const std::function<void()>& deed) {
    return Notices(control, Notice::What::Focus, deed);
  }

  tests::SlowEventQueue events;
  ScriptedDialogs dialogs;
  MemorySettings settings;
  tests::ScriptedForms forms;
  FrmMain frm;
  Progress progress{events, frm.tmrProgress, frm.msgBar, frm.pbMain};
  Options options;
  const Presets presets = BuildPresets(FakeShell());
  HoveredRow hovered;
  std::vector<std::string> guarded;
  std::function<void()> help;
};

// --- Loading

TEST_F(SmartMarkerDialogTest, ListsStartAfreshAtEachOpening) {
  AddFile("/a/", "x");
  for (int i = 0; i < 2; ++i) {
    Show([](FrmSmartDel& form) {
      EXPECT_EQ(form.lstLeaveDate.ListIndex(), 1);
      for (ChoiceList* const list : {&form.lstDate, &form.lstSize, &form.lstVer, &form.lstLeaveVer}) {
        EXPECT_EQ(list->ListIndex(), 0);
        list->Choose(2);
      }
      EXPECT_TRUE(form.chkSubFolder.Ticked() && form.chkLeaveAtLeast1.Ticked());
      EXPECT_EQ(form.TabOptions.SelectedTab(), 1);
      EXPECT_EQ(form.cmbPattern.Text(), "");
      EXPECT_THAT(Selected(form), IsEmpty());
      form.chkSubFolder.Value = kOff;
      form.lstLeaveDate.Choose(2);
      form.cmbPattern.SetText("typed");
      form.lstFolder.SetSelected(1, true);
      form.CancelButton.OnClick();
      EXPECT_FALSE(form.Visible());
    });
  }
}

TEST_F(SmartMarkerDialogTest, SizesCanBeChosenWhereTheyMayDiffer) {
  const std::vector<std::pair<ResultList, bool>> cases = {{ResultList::ZeroSize, false},
                                                          {ResultList::Duplicates, false},
                                                          {ResultList::SameName, true},
                                                          {ResultList::Portions, true},
                                                          {ResultList::ReadErrors, false}};
  for (const auto& [kind, enabled] : cases) {
    Select(kind);
    Show([enabled](const FrmSmartDel& form) { EXPECT_EQ(form.lstSize.Enabled(), enabled); });
  }
}

TEST_F(SmartMarkerDialogTest, VersionsCanBeChosenWhereTheyAreFilled) {
  for (const bool filled : {false, true}) {
    frm.results.Shown().Tag = filled ? "Ver" : "";
    Show([filled](const FrmSmartDel& form) {
      EXPECT_EQ(form.lstVer.Enabled(), filled);
      EXPECT_EQ(form.lstLeaveVer.Enabled(), filled);
      EXPECT_EQ(form.lstVer.ListIndex() + form.lstLeaveVer.ListIndex(), 0);
    });
  }
}

TEST_F(SmartMarkerDialogTest, FoldersAreThoseOfTheListWithAllAroundThem) {
  AddFile("/data/new/", "x");
  AddFile("/data/old/", "y");
  AddFile("/data/new/", "z");
  Select(ResultList::ZeroSize);
  AddFile("/elsewhere/", "x");
  Select(ResultList::Duplicates);
  Show([](const FrmSmartDel& form) {
    EXPECT_THAT(Folders(form), ElementsAre("/data/new/", "/data/", "/", "/data/old/"));
    EXPECT_THAT(Selected(form), IsEmpty());
    EXPECT_TRUE(form.lstFolder.Visible());
  });
}

TEST_F(SmartMarkerDialogTest, TheMainWindowShowsHowFarTheFoldersAre) {
  AddFile("/a/b/", "x");
  std::vector<std::string> texts;
  std::vector<int> bar;
  events.onPump = [&] {
    if (!frm.tmrProgress.Enabled()) return;
    progress.Tick();
    texts.push_back(frm.msgBar.Text());
    bar.push_back(static_cast<int>(frm.pbMain.Value()));
  };
  Show([&](const FrmSmartDel&) {
    EXPECT_FALSE(frm.tmrProgress.Enabled());
    EXPECT_EQ(frm.pbMain.Value(), 0);
    EXPECT_EQ(frm.msgBar.Text(), "Tresmor is ready.");
  });
  EXPECT_THAT(texts, ElementsAre(StartsWith("Smart Marker - loading 1 of 3 folders..."),
                                 StartsWith("Smart Marker - loading 2 of 3 folders..."),
                                 StartsWith("Smart Marker - loading 3 of 3 folders...")));
  EXPECT_THAT(bar, ElementsAre(33, 66, 100));
}

TEST_F(SmartMarkerDialogTest, AnEmptyListHasNoFolders) {
  Show([&](const FrmSmartDel& form) { EXPECT_THAT(Folders(form), IsEmpty()); });
  EXPECT_EQ(progress.ProgressMsg(), "Smart Marker - loading [value] of 0 folders...");
}

TEST_F(SmartMarkerDialogTest, ItStaysWithTheListThatWasOnShow) {
  AddFile("/a/", "x");
  AddFile("/a/", "y");
  events.onPump = [&] { Select(ResultList::ZeroSize); };
  Show([&](FrmSmartDel& form) {
    events.onPump = nullptr;
    EXPECT_EQ(frm.results.ShownKind(), ResultList::Duplicates);
    EXPECT_THAT(Folders(form), ElementsAre("/a/", "/"));
    EXPECT_FALSE(form.lstSize.Enabled());
  });
}

TEST_F(SmartMarkerDialogTest, PatternsAreTheHistoryAndThePresets) {
  settings.Save(kAppTitle, kPatternHistory, "0", "*.bak");
  settings.Save(kAppTitle, kPatternHistory, "2", "*.old");
  settings.Save(kAppTitle, kPatternHistory, "9", "*.last");
  settings.Save(kAppTitle, kPatternHistory, "10", "*.beyond");
  Show([](const FrmSmartDel& form) {
    EXPECT_THAT(HistoryBoxes::Entries(form.cmbPattern),
                ElementsAre("*.bak", "*.old", "*.last", "__________________", "Photos / Images", "Music / Songs",
                            "Movie Clips", "Downloads", "All Files"));
    EXPECT_EQ(form.cmbPattern.Text(), "");
  });
}

TEST_F(SmartMarkerDialogTest, TooltipsAreLeftOutWhereTheyAreOff) {
  AddFile("/a/", "x");
  for (const bool off : {false, true}) {
    options.NoTooltipsOpt = off ? 1 : 0;
    forms.withTips = [&](FrmSmartDel& form, const ListTip& tips) {
      form.lstFolder.OnMouseMove(1);
      EXPECT_EQ(form.cmbPattern.ToolTipText(), off ? "" : "e.g.: *.jpg; a*.gif");
      const auto found = tips.texts.find(&form.lstFolder);
      EXPECT_EQ(found == tips.texts.end() ? "" : found->second, off ? "" : "/a/");
    };
    Show([](const FrmSmartDel&) {});
    forms.withTips = nullptr;
  }
}

// --- Folders

TEST_F(SmartMarkerDialogTest, AllFoldersOrNoneCanBeSelected) {
  AddFile("/a/b/", "x");
  Show([](FrmSmartDel& form) {
    EXPECT_EQ(Focusings(form.lstFolder, [&] { form.cmdSelAll.OnClick(); }), 1);
    EXPECT_THAT(Selected(form), ElementsAre("/a/b/", "/a/", "/"));
    EXPECT_EQ(Focusings(form.lstFolder, [&] { form.cmdClrAll.OnClick(); }), 1);
    EXPECT_THAT(Selected(form), IsEmpty());
  });
}

TEST_F(SmartMarkerDialogTest, SelectingAllCountsRowsIn16Bits) {
  for (int i = 1; i < 32767; ++i) AddFile("/" + std::to_string(i) + "/", "x");
  Show([](FrmSmartDel& form) {
    form.cmdSelAll.OnClick();
    EXPECT_EQ(Selected(form).size(), 32767U);
  });
  AddFile("/more/", "x");
  dialogs.boxes = {{"Run-time error '6':\r\n\r\nOverflow", ""}};
  Show([](FrmSmartDel& form) {
    EXPECT_EQ(Focusings(form.lstFolder, [&] { form.cmdSelAll.OnClick(); }), 0);
    EXPECT_TRUE(form.Visible());
    EXPECT_EQ(Selected(form).size(), 32767U) << "those before the failure";
  });
}

TEST_F(SmartMarkerDialogTest, ManyFoldersAreSelectedByOneNotice) {
  for (const char* const folder : {"/a/", "/b/", "/c/"}) AddFile(folder, "x");
  for (std::int32_t row = 1; row <= 3; ++row) frm.results.Shown().SetSelected(row, true);
  Show([](FrmSmartDel& form) {
    for (const Button* const button : {&form.cmdSelAll, &form.cmdClrAll, &form.cmdGetSelections}) {
      EXPECT_EQ(Notices(form.lstFolder, Notice::What::RowsChanged, [&] { button->OnClick(); }), 1);
    }
  });
}

TEST_F(SmartMarkerDialogTest, SelectionsAreTakenOverFromTheRows) {
  AddFile("/a/", "x");
  AddFile("/b/", "y");
  frm.results.Shown().SetSelected(1, false);
  Show([this](FrmSmartDel& form) {
    EXPECT_EQ(Focusings(form.lstFolder, [&] { form.cmdGetSelections.OnClick(); }), 1);
    EXPECT_THAT(Selected(form), IsEmpty());
    form.lstFolder.SetSelected(2, true);
    frm.results.Shown().SetSelected(2, true);
    form.cmdGetSelections.OnClick();
    EXPECT_THAT(Selected(form), ElementsAre("/", "/b/"));
  });
}

TEST_F(SmartMarkerDialogTest, ManyRowsInManyFoldersLetEventsIn) {
  for (int i = 0; i < 300; ++i) AddFile("/data/" + std::to_string(i % 60) + "/", std::to_string(i));
  const int before = events.pumps;
  Show([](const FrmSmartDel& form) { EXPECT_EQ(form.lstFolder.Count(), 62); });
  EXPECT_EQ(events.pumps - before, 300 + 62);
}

// --- Patterns

TEST_F(SmartMarkerDialogTest, APresetPutsItsPatternIntoTheBoxAndTheSeparatorEmptiesIt) {
  Show([](FrmSmartDel& form) {
    const std::vector<std::pair<std::int32_t, std::string>> cases = {{1, "*.jpg;*.gif;*.bmp"},
                                                                     {2, "*.mp3;*.wav;*.rm;*.ra;*.mid"},
                                                                     {3, "*.mpg;*.rm;*.avi;*.ram;*.mov;*.wmv;*.asf"},
                                                                     {4, "*.exe;*.zip"},
                                                                     {5, "*.*"},
                                                                     {0, ""}};
    for (const auto& [index, text] : cases) {
      form.cmbPattern.SetListIndex(index);
      EXPECT_EQ(form.cmbPattern.Text(), text);
    }
  });
}

TEST_F(SmartMarkerDialogTest, TheHistoryHoldsFourPatterns) {
  for (const char* const pattern : {"*.1", "*.2", "*.3", "*.4", "*.5"}) MarkBy(pattern);
  EXPECT_EQ(Kept(0) + Kept(1) + Kept(2) + Kept(3) + Kept(4), "*.5*.4*.3*.2-");
  Show([](const FrmSmartDel& form) {
    EXPECT_EQ(form.cmbPattern.ListCount(), 4 + 6);
    EXPECT_EQ(form.cmbPattern.List(3), "*.2");
  });
}

TEST_F(SmartMarkerDialogTest, KeysBeyondTheEntriesComeBack) {
  for (const char* const key : {"0", "1", "2", "9"}) settings.Save(kAppTitle, kPatternHistory, key, key);
  MarkBy("new");
  EXPECT_EQ(Kept(3) + Kept(4) + Kept(9), "2-9");
  Show([](const FrmSmartDel& form) { EXPECT_EQ(form.cmbPattern.List(4), "9"); });
}

TEST_F(SmartMarkerDialogTest, CloseLeavesTheHistoryAndTheMarksAlone) {
  AddFile("/a/", "x.jpg");
  Show([](FrmSmartDel& form) {
    form.cmbPattern.SetText("*.jpg");
    form.CancelButton.OnClick();
  });
  EXPECT_EQ(Kept(0), "-");
  EXPECT_EQ(Marks(), "-");
  EXPECT_FALSE(frm.tmrUpdate.Enabled());
}

// --- Marks

TEST_F(SmartMarkerDialogTest, MarkRunsTheRulesClosesAndHasTheMarksCounted) {
  AddFile("/a/", "x.jpg");
  AddFile("/b/", "y.txt");
  MarkBy("*.jpg");
  EXPECT_EQ(Marks(), "x-");
  EXPECT_TRUE(frm.tmrUpdate.Enabled());
}

TEST_F(SmartMarkerDialogTest, AContradictionKeepsItOpen) {
  dialogs.boxes = {
      {"You have select keep at least one file, please select either by date or version.", "", BoxIcon::Information}};
  Show([](FrmSmartDel& form) {
    form.lstLeaveDate.Choose(0);
    form.cmdMark.OnClick();
    EXPECT_TRUE(form.Visible());
  });
  EXPECT_EQ(Kept(0), "-");
}

TEST_F(SmartMarkerDialogTest, ClearMarksKeepsItOpenAndCountsNothing) {
  AddFile("/a/", "x");
  AddFile("/a/", "y");
  for (const std::int32_t row : {1, 2}) frm.results.Shown().SetChecked(row, true);
  Show([this](FrmSmartDel& form) {
    form.cmdClearMarks.OnClick();
    EXPECT_TRUE(form.Visible());
    EXPECT_EQ(Marks(), "--");
  });
  EXPECT_FALSE(frm.tmrUpdate.Enabled());
}

TEST_F(SmartMarkerDialogTest, OneActionRunsAtATime) {
  AddFile("/a/", "x");
  AddFile("/a/", "y");
  frm.results.Shown().SetChecked(1, true);
  Show([this](FrmSmartDel& form) {
    form.lstDate.Choose(1);
    events.onPump = [&] {
      form.CancelButton.OnClick();
      EXPECT_TRUE(form.Visible());
      form.cmdClearMarks.OnClick();
    };
    form.cmdMark.OnClick();
    events.onPump = nullptr;
    EXPECT_FALSE(form.Visible());
  });
  EXPECT_EQ(Marks(), "-x");
}

// --- Help

TEST_F(SmartMarkerDialogTest, HelpCanBeAskedFor) {
  int asked = 0;
  help = [&] { ++asked; };
  Show([](const FrmSmartDel& form) {
    EXPECT_TRUE(form.cmdHelp.Enabled());
    form.cmdHelp.OnClick();
    EXPECT_TRUE(form.Visible());
  });
  EXPECT_EQ(asked, 1);
}

TEST_F(SmartMarkerDialogTest, AFailureOfAHoverTextIsTold) {
  dialogs.boxes = {{"Run-time error '9':\r\n\r\nSubscript out of range", ""}};
  Show([](const FrmSmartDel& form) { form.lstFolder.OnMouseMove(99); });
}

}  // namespace
}  // namespace tresmor
