// The dialog Smart Marking by keys alone and by mouse.
#include <gtest/gtest.h>

#include "app/smart_marking_world.h"

namespace tresmor::tests {
namespace {

class SmartMarkingTest : public SmartMarkingWorld {
 protected:
  SmartMarkingTest() {
    MakeFolder("data/below");
    MakeFile("data/below/three", "other words");
    MakeFile("data/below/four", "other words");
    MakeFile("data/one", "words");
    MakeFile("data/two", "words");
    Start();
    AddFolder(At("data"));
    Search(Report(3, 0, "4, 2 group(s)", "0, 0 group(s)"));
    Frm().results.tabMain.Select(2);
  }

  // Of the folders, which the control behind the list knows.
  std::string Selected(const QWidget& window) {
    std::string selected;
    const auto& model = *Folders(window)->model();
    const auto* const control = static_cast<Control*>(Folders(window)->property("control").value<void*>());
    for (int row = 0; row < model.rowCount(); ++row) {
      if (!static_cast<const ListView*>(control)->Selected(row + 1)) continue;
      selected += (selected.empty() ? "" : " ") + Below(model.index(row, 0).data().toString().toStdString());
    }
    return selected;
  }
  // The marked files, in alphabetical order.
  std::string Marked() {
    std::set<std::string> names;
    for (int row = 1; row <= Duplicates().Count(); ++row) {
      if (Duplicates().Checked(row)) names.insert(Duplicates().Cell(row, kNameItem));
    }
    std::string marked;
    for (const std::string& name : names) marked += (marked.empty() ? "" : " ") + name;
    return marked;
  }

 private:
  // Only the last part of folders above the test's own.
  std::string Below(const std::string& folder) const {
    return folder.starts_with(root_) ? folder.substr(root_.size()) : "above";
  }
};

TEST_F(SmartMarkingTest, ARuleOfTheFirstTabByKeys) {
  ByKey([this](QWidget& window) {
    ExpectHelpByKey(window, "mark.htm");
    TabTo(window, Choice(window, "By Date"));
    Press(window, Qt::Key_Down);
    TabTo(window, "Mark");
    Press(window, Qt::Key_Return);
  });
  EXPECT_EQ(std::ranges::count(Marked(), ' '), 1) << "one of each group: " << Marked();
}

TEST_F(SmartMarkingTest, ARuleOfTheFirstTabByTheMouse) {
  ByMouse([](QWidget& window) {
    EXPECT_FALSE(Choice(window, "By Size")->isEnabled());
    EXPECT_FALSE(Choice(window, "By Version")->isEnabled());
    ChooseByMouse(*Choice(window, "By Date"), "Older File!");
    Click(Find<QPushButton>(window, "Mark"));
  });
  EXPECT_EQ(std::ranges::count(Marked(), ' '), 1) << "one of each group: " << Marked();
}

TEST_F(SmartMarkingTest, HelpByKeyAndByTheMouse) {
  ByMouse([this](QWidget& window) {
    Click(Find<QPushButton>(window, "Help (F1)"));
    ExpectHelp("mark.htm");
    GiveKeys(window);
    PressLetter(window, Qt::Key_H);
    ExpectHelp("mark.htm");
    GiveKeys(window);
    Press(window, Qt::Key_Escape);
  });
}

TEST_F(SmartMarkingTest, AFolderAndAPatternByKeys) {
  ByKey([this](QWidget& window) {
    MoreByKey(window);
    EXPECT_TRUE(Folders(window)->isVisible());
    TabTo(window, Folders(window));
    Press(window, Qt::Key_Home);
    while (Selected(window) != "data/") Press(window, Qt::Key_Down);
    TabTo(window, "Sub-folder");
    Press(window, Qt::Key_Space);
    TabTo(window, Choice(window, "By Pattern"));
    QTest::keyClicks(window.focusWidget(), "th*");
    TabTo(window, "Mark");
    Press(window, Qt::Key_Return);
  });
  EXPECT_EQ(std::ranges::count(Marked(), ' '), 1) << Marked();
  EXPECT_NE(Marked().find("three"), std::string::npos) << "by its name; of the folder one is kept: " << Marked();
  EXPECT_EQ(Marked().find("four"), std::string::npos) << Marked();
}

TEST_F(SmartMarkingTest, AFolderAndAPatternByTheMouse) {
  ByMouse([this](QWidget& window) {
    MoreByMouse(window);
    QTreeView* const folders = Folders(window);
    for (int row = 0; Selected(window) != "data/"; ++row) {
      ASSERT_LT(row, folders->model()->rowCount());
      const QModelIndex index = folders->model()->index(row, 0);
      folders->scrollTo(index);
      QTest::mouseClick(folders->viewport(), Qt::LeftButton, {}, folders->visualRect(index).center());
    }
    ClickBox(window, "Sub-folder");
    ClickBox(window, "Keep at least one:");
    ChooseByMouse(*Choice(window, "By Pattern"), "Photos / Images");
    EXPECT_EQ(Choice(window, "By Pattern")->currentText(), "*.jpg;*.gif;*.bmp");
    ExpectMessage("Smart Marker");
    Click(Find<QPushButton>(window, "Mark"));
  });
  EXPECT_EQ(Marked(), "one two") << "whole groups, without the belt";
}

TEST_F(SmartMarkingTest, WhatIsKeptIsChosenByKeysAndByTheMouse) {
  const auto expectNoneChosen = [this](QWidget& window) {
    script_.Expect("Tresmor", [](QWidget& box) { Find<QPushButton>(box, "OK")->click(); });
    Click(Find<QPushButton>(window, "Mark"));
    EXPECT_TRUE(window.isVisible());
    GiveKeys(window);
  };
  ByMouse([&](QWidget& window) {
    MoreByMouse(window);
    EXPECT_EQ(Choice(window, "Date")->currentText(), "Keep Newest Files");
    EXPECT_FALSE(Choice(window, "Version")->isEnabled());
    ChooseByMouse(*Choice(window, "Date"), "(Unspecified)");
    expectNoneChosen(window);
    TabTo(window, Choice(window, "Date"));
    Press(window, Qt::Key_End);
    EXPECT_EQ(Choice(window, "Date")->currentText(), "Keep Oldest Files!");
    Click(Find<QPushButton>(window, "Select All"));
    TabTo(window, "Mark");
    Press(window, Qt::Key_Space);
  });
  EXPECT_EQ(std::ranges::count(Marked(), ' '), 1) << Marked();
}

TEST_F(SmartMarkingTest, FoldersAreTakenFromTheSelectedFiles) {
  for (int row = 1; row <= Duplicates().Count(); ++row) {
    Duplicates().SetSelected(row, Duplicates().Cell(row, kNameItem) == "three");
  }
  ByKey([this](QWidget& window) {
    MoreByKey(window);
    TabTo(window, "Get selections");
    Press(window, Qt::Key_Space);
    EXPECT_EQ(Selected(window), "data/below/");
    EXPECT_TRUE(Folders(window)->hasFocus());
    TabTo(window, "Select All");
    Press(window, Qt::Key_Return);
    EXPECT_NE(Selected(window), "data/below/");
    TabTo(window, "Clear All");
    Press(window, Qt::Key_Space);
    EXPECT_EQ(Selected(window), "");
    Press(window, Qt::Key_Escape);
  });
  ByMouse([this](QWidget& window) {
    MoreByMouse(window);
    Click(Find<QPushButton>(window, "Select All"));
    EXPECT_NE(Selected(window), "");
    Click(Find<QPushButton>(window, "Clear All"));
    EXPECT_EQ(Selected(window), "");
    Click(Find<QPushButton>(window, "Get selections"));
    EXPECT_EQ(Selected(window), "data/below/");
    Click(Find<QPushButton>(window, "Close"));
  });
  EXPECT_EQ(Marked(), "");
}

TEST_F(SmartMarkingTest, MarksAreClearedByKeyAndByTheMouse) {
  const auto markAll = [this] {
    for (int row = 1; row <= Duplicates().Count(); ++row) Duplicates().SetChecked(row, true);
  };
  markAll();
  ByKey([this](QWidget& window) {
    PressLetter(window, Qt::Key_C);
    EXPECT_EQ(Marked(), "");
    Press(window, Qt::Key_Escape);
  });
  markAll();
  ByMouse([](QWidget& window) {
    Click(Find<QPushButton>(window, "Clear Marks"));
    window.close();
  });
  EXPECT_EQ(Marked(), "");
}

}  // namespace
}  // namespace tresmor::tests
