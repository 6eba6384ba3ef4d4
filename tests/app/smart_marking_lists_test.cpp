// What Smart Marking goes by where files of a group may differ: their sizes and versions.
#include <gtest/gtest.h>

#include "app/smart_marking_world.h"
#include "support/pe_image.h"

namespace tresmor::tests {
namespace {

class SmartMarkingListsTest : public SmartMarkingWorld {
 protected:
  // Two programs of one name, of which the newer one is larger.
  SmartMarkingListsTest() {
    MakeFolder("data/old");
    MakeFolder("data/new");
    MakeFile("data/old/x.exe", PeBytes({1, 0, 0, 0}));
    MakeFile("data/new/x.exe", PeBytes({2, 0, 0, 0}) + "more");
    Start();
    AddFolder(At("data"));
    Search(Report(1, 0, "0, 0 group(s)", "2, 1 group(s)"));
    Frm().results.tabMain.Select(3);
  }
  ListView& SameName() { return List(ResultList::SameName); }
  void FillVersions() {
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(SameName().Tag(), kVersionTag);
  }
  // The folders of the marked files, which are unmarked then.
  std::string TakeMarked() {
    std::set<std::string> folders;
    for (int row = 1; row <= SameName().Count(); ++row) {
      if (SameName().Checked(row)) folders.insert(SameName().Cell(row, kFolderItem).substr(At("data/").size()));
      SameName().SetChecked(row, false);
    }
    std::string marked;
    for (const std::string& folder : folders) marked += folder;
    return marked;
  }
  // Goes to a list by Tab and takes its entry with that number.
  static void ChooseByKeys(QWidget& window, const QString& name, int entry) {
    TabTo(window, Choice(window, name));
    Press(window, Qt::Key_Home);
    for (int i = 0; i < entry; ++i) Press(window, Qt::Key_Down);
    EXPECT_EQ(Choice(window, name)->currentIndex(), entry);
  }
  static void MarkByKeys(QWidget& window) {
    TabTo(window, "Mark");
    Press(window, Qt::Key_Return);
  }
};

TEST_F(SmartMarkingListsTest, SizesByKeys) {
  const std::vector<std::pair<int, const char*>> cases = {{1, "new/"}, {2, "old/"}};
  for (const auto& [entry, marked] : cases) {
    ByKey([entry = entry](QWidget& window) {
      ChooseByKeys(window, "By Size", entry);
      MarkByKeys(window);
    });
    EXPECT_EQ(TakeMarked(), marked);
  }
}

TEST_F(SmartMarkingListsTest, SizesByTheMouse) {
  const std::vector<std::pair<const char*, const char*>> cases = {{"Largest File", "new/"}, {"Smallest File!", "old/"}};
  for (const auto& [entry, marked] : cases) {
    ByMouse([entry = entry](QWidget& window) {
      ChooseByMouse(*Choice(window, "By Size"), entry);
      ClickButton(window, "Mark");
    });
    EXPECT_EQ(TakeMarked(), marked);
  }
}

TEST_F(SmartMarkingListsTest, VersionsByKeysOnceTheyAreFilled) {
  ByKey([](QWidget& window) {
    EXPECT_FALSE(Choice(window, "By Version")->isEnabled());
    Press(window, Qt::Key_Escape);
  });
  FillVersions();
  const std::vector<std::pair<int, const char*>> cases = {{1, "new/"}, {2, "old/"}};
  for (const auto& [entry, marked] : cases) {
    ByKey([entry = entry](QWidget& window) {
      ChooseByKeys(window, "By Version", entry);
      MarkByKeys(window);
    });
    EXPECT_EQ(TakeMarked(), marked);
  }
}

TEST_F(SmartMarkingListsTest, VersionsByTheMouse) {
  FillVersions();
  const std::vector<std::pair<const char*, const char*>> cases = {{"Newer Version", "new/"},
                                                                  {"Older Version!", "old/"}};
  for (const auto& [entry, marked] : cases) {
    ByMouse([entry = entry](QWidget& window) {
      ChooseByMouse(*Choice(window, "By Version"), entry);
      ClickButton(window, "Mark");
    });
    EXPECT_EQ(TakeMarked(), marked);
  }
}

// Each entry keeps the other one of what it says, and is to stay so.
TEST_F(SmartMarkingListsTest, TheVersionThatIsKeptByKeys) {
  FillVersions();
  const std::vector<std::pair<int, const char*>> cases = {{1, "new/"}, {2, "old/"}};
  for (const auto& [entry, marked] : cases) {
    ByKey([entry = entry](QWidget& window) {
      MoreByKey(window);
      TabTo(window, "Select All");
      Press(window, Qt::Key_Space);
      ChooseByKeys(window, "Date", 0);
      ChooseByKeys(window, "Version", entry);
      MarkByKeys(window);
    });
    EXPECT_EQ(TakeMarked(), marked);
  }
}

TEST_F(SmartMarkingListsTest, TheVersionThatIsKeptByTheMouse) {
  FillVersions();
  const std::vector<std::pair<const char*, const char*>> cases = {{"Keep Newest Version", "new/"},
                                                                  {"Keep Oldest Version!", "old/"}};
  for (const auto& [entry, marked] : cases) {
    ByMouse([entry = entry](QWidget& window) {
      MoreByMouse(window);
      ClickButton(window, "Select All");
      ChooseByMouse(*Choice(window, "Date"), "(Unspecified)");
      ChooseByMouse(*Choice(window, "Version"), entry);
      ClickButton(window, "Mark");
    });
    EXPECT_EQ(TakeMarked(), marked);
  }
}

TEST_F(SmartMarkingListsTest, WholeGroupsByKeys) {
  script_.Expect("Smart Marking", [this](QWidget& window) {
    MoreByKey(window);
    TabTo(window, "Select All");
    Press(window, Qt::Key_Space);
    TabTo(window, "Keep at least one:");
    Press(window, Qt::Key_Space);
    EXPECT_FALSE(Find<QCheckBox>(window, "Keep at least one:")->isChecked());
    script_.Expect("Smart Marker", [](QWidget& box) {
      TabTo(box, "Don't show this dialog again.");
      Press(box, Qt::Key_Space);
      Press(box, Qt::Key_Return);
    });
    MarkByKeys(window);
  });
  Key(Qt::Key_K, Qt::ControlModifier);
  WaitForDialogs();
  EXPECT_EQ(TakeMarked(), "new/old/");
}

}  // namespace
}  // namespace tresmor::tests
