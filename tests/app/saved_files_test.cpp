// Sessions saved and loaded and lists exported, by keys alone and by mouse, with all that is asked meanwhile.
#include <gtest/gtest.h>

#include "app/dialog_world.h"

namespace tresmor::tests {
namespace {

constexpr char kSaveTitle[] = "Tresmor - Save search session as";
constexpr char kLoadTitle[] = "Tresmor - load search session";
constexpr char kExportTitle[] = "Tresmor - Export search result list";
constexpr char kIncludeTitle[] = "Include search result";
constexpr char kIncludeText[] = "Do you want to include your search result in addition to search parameters?";

class SavedFilesTest : public DialogTest {
 protected:
  SavedFilesTest() { StartWithDuplicates(); }

  // Typed, and confirmed by a click.
  static ModalScript::Answer NameAndClick(const std::string& name, const QString& button) {
    return [name, button](QWidget& window) {
      TypeName(window, name);
      ClickButton(window, button);
    };
  }
  void SaveByMouse(const std::string& name, const QString& include) {
    script_.Expect(kSaveTitle, NameAndClick(At(name), "Save"));
    ExpectBoxByMouse(kIncludeTitle, kIncludeText, include);
    ClickMenu("Search Session", "Save Search Session As");
    WaitForDialogs();
  }
  void StartAnew() {
    ClickMenu("Search Session", "New Search");
    WaitUntil([this] { return Frm().lstPath.Count() == 0; });
    EXPECT_EQ(Duplicates().Count(), 0);
  }
  QString ExportText(const std::string& name) const {
    return "Result list is successfully exported, open it now? \n" + QString::fromStdString(At(name));
  }
};

TEST_F(SavedFilesTest, ASessionWithItsResultByTheMouse) {
  SaveByMouse("home/mine", "Yes");
  EXPECT_TRUE(Exists("home/mine.Tresmor"));
  StartAnew();
  script_.Expect(kLoadTitle, NameAndClick(At("home/mine.Tresmor"), "Open"));
  ClickMenu("Search Session", "Load Search Session");
  WaitForDialogs();
  EXPECT_EQ(Frm().lstPath.Count(), 1);
  EXPECT_EQ(Duplicates().Count(), 2);
}

TEST_F(SavedFilesTest, ASessionWithoutItsResultIsPickedByTheMouse) {
  SaveByMouse("home/bare", "No");
  StartAnew();
  script_.Expect(kLoadTitle, [this](QWidget& window) {
    static_cast<QFileDialog&>(window).setDirectory(QString::fromStdString(At("home")));
    ClickName(window, "bare.Tresmor");
    ClickButton(window, "Open");
  });
  ClickMenu("Search Session", "Load Search Session");
  WaitForDialogs();
  EXPECT_EQ(Frm().lstPath.Count(), 1);
  EXPECT_EQ(Duplicates().Count(), 0);
}

TEST_F(SavedFilesTest, ASessionByKeysAlone) {
  script_.Expect(kSaveTitle, NameByKeys(At("home/mine")));
  script_.Expect(kIncludeTitle, [](QWidget& window) { Press(window, Qt::Key_N, Qt::AltModifier); });
  Key(Qt::Key_A, Qt::ControlModifier);
  WaitForDialogs();
  ASSERT_TRUE(Exists("home/mine.Tresmor"));
  Key(Qt::Key_N, Qt::AltModifier);
  WaitUntil([this] { return Frm().lstPath.Count() == 0; });
  script_.Expect(kLoadTitle, NameByKeys(At("home/mine.Tresmor")));
  Key(Qt::Key_L, Qt::ControlModifier);
  WaitForDialogs();
  EXPECT_EQ(Frm().lstPath.Count(), 1);
}

TEST_F(SavedFilesTest, ASessionThatIsThereIsReplacedOnlyIfToldSo) {
  MakeFile("home/old.Tresmor", "other");
  const auto answer = [this](ModalScript::Answer reply) {
    script_.Expect(kSaveTitle, NameAndClick(At("home/old.Tresmor"), "Save"));
    script_.Expect(kSaveTitle, [reply](QWidget& window) {
      const QString text = static_cast<QMessageBox&>(window).text();
      EXPECT_TRUE(text.contains("old.Tresmor already exists.")) << text.toStdString();
      reply(window);
    });
  };
  answer([](QWidget& window) { ClickButton(window, "No"); });
  script_.Expect(kSaveTitle, [](QWidget& window) { ClickButton(window, "Cancel"); });
  ClickMenu("Search Session", "Save Search Session");
  WaitForDialogs();
  EXPECT_EQ(std::filesystem::file_size(At("home/old.Tresmor")), 5U);
  answer([](QWidget& window) { Press(window, Qt::Key_Y, Qt::AltModifier); });
  ExpectBoxByMouse(kIncludeTitle, kIncludeText, "Yes");
  ClickMenu("Search Session", "Save Search Session");
  WaitForDialogs();
  EXPECT_GT(std::filesystem::file_size(At("home/old.Tresmor")), 5U);
}

TEST_F(SavedFilesTest, AFileThatIsNoSessionIsToldAndTheNextSearchGivesTheMenuBack) {
  MakeFile("home/none.Tresmor", "1.0.0\r\n");
  const auto load = [this](ModalScript::Answer leave) {
    script_.Expect(kLoadTitle, NameAndClick(At("home/none.Tresmor"), "Open"));
    script_.Expect("Incorrect version", std::move(leave));
    ClickMenu("Search Session", "Load Search Session");
    WaitForDialogs();
    EXPECT_EQ(Frm().lstPath.Count(), 0);
    EXPECT_FALSE(Frm().mnuSrchSession.Enabled());
  };
  load([](QWidget& window) { ClickButton(window, "OK"); });
  AddFolder(At("data"));
  Search(Report(1, 0, "2, 1 group(s)", "0, 0 group(s)"));
  load([](QWidget& window) { QTest::keyClick(&window, Qt::Key_Return); });
}

// --- Export

TEST_F(SavedFilesTest, AListIsExportedAndOpenedByTheMouse) {
  MakeOpener();
  script_.Expect(kExportTitle, NameAndClick(At("home/list"), "Save"));
  ExpectBoxByMouse("Open?", ExportText("home/list.csv"), "Yes");
  ClickMenu("Result Files", "Export result list (CSV format)");
  WaitForDialogs();
  EXPECT_EQ(Opened(), At("home/list.csv"));
  std::ifstream file(At("home/list.csv"));
  std::string header;
  std::getline(file, header);
  EXPECT_TRUE(header.find("Name") != header.npos) << header;
}

TEST_F(SavedFilesTest, AListIsExportedByKeysAlone) {
  MakeOpener();
  script_.Expect(kExportTitle, NameByKeys(At("home/list")));
  script_.Expect("Open?", [](QWidget& window) { Press(window, Qt::Key_N, Qt::AltModifier); });
  Key(Qt::Key_X, Qt::ControlModifier);
  WaitForDialogs();
  EXPECT_TRUE(Exists("home/list.csv"));
  EXPECT_FALSE(Exists("opened"));
  // Back from Cancel and Escape nothing is written.
  ASSERT_EQ(unlink(At("home/list.csv").c_str()), 0);
  InDialog(kExportTitle, Qt::Key_X, Qt::ControlModifier, [](QWidget& window) { Press(window, Qt::Key_Escape); });
  InDialog(kExportTitle, Qt::Key_X, Qt::ControlModifier, [](QWidget& window) { ClickButton(window, "Cancel"); });
  EXPECT_FALSE(Exists("home/list.csv"));
}

}  // namespace
}  // namespace tresmor::tests
