// All that a user does with the program, one thing after the other, on files with odd names. After each step all files
// are where they belong, with all that was in them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QHeaderView>
#include <QInputMethodEvent>
#include <QPlainTextEdit>
#include <QUrl>
#include <ctime>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <utility>

#include "app/desktop_tools.h"
#include "app/dialog_world.h"

namespace tresmor::tests {
namespace {

using testing::IsEmpty;

// By paths from the test's folder on.
using Files = std::map<std::string, std::string>;

const std::string kWords = "the same words";
const std::string kTarget = "data/old photos, summer/";
const std::string kArea = "data/backup/";
const std::string kOut = kTarget + "kept out/";
const std::string kHuge = kTarget + "huge/";
const std::string kHugeContent = "too much to be read";
const std::string kPattern = "=*;*\xC3\xBC*;line*";

class WholeStoryTest : public DialogTest {
 protected:
  WholeStoryTest() {
    for (const std::string& folder : {kTarget, kArea, kOut, kHuge, std::string("moved")}) MakeFolder(folder);
    for (const char* const name :
         {"one, two.txt", "say \"hi\" twice.txt", "=1+1.txt", "line\nend.txt", "m\xC3\xBC\xC3\x9Fig.txt"}) {
      Make(kTarget + name, kWords, kOldTime);
    }
    Make(kTarget + "blue.bmp", BlueBitmap(), kOldTime);
    Make(kTarget + "empty", "", kOldTime);
    Make(kOut + "three.txt", kWords, kOldTime);
    Make(kArea + "two.txt", kWords, kNewTime);
    Make(kArea + "blue copy.bmp", BlueBitmap(), kNewTime);
    for (const char* const name : {"1", "2"}) {
      MakeSparse(kHuge + name, kHugeSize, 'x');
      made_[kHuge + name] = kHugeContent;
    }
  }

  // --- Files

  void Make(const std::string& path, const std::string& content, std::time_t modified) {
    MakeFile(path, content);
    made_[path] = content;
    const timespec time{.tv_sec = modified, .tv_nsec = 0};
    const timespec times[] = {time, time};
    Check(utimensat(AT_FDCWD, At(path).c_str(), times, 0) == 0, path);
  }
  static std::string ContentOf(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
  }
  // All files in a folder and below it.
  Files FilesIn(const std::string& folder) {
    Files files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(At(folder))) {
      if (!entry.is_regular_file()) continue;
      const std::string path = entry.path();
      files[path.substr(root_.size())] = entry.file_size() == kHugeSize ? kHugeContent : ContentOf(path);
    }
    return files;
  }
  void ExpectAllAtHome() { EXPECT_EQ(FilesIn("data"), made_); }
  void ExpectGone(const std::vector<std::string>& gone) {
    Files left = made_;
    for (const std::string& path : gone) EXPECT_EQ(left.erase(path), 1) << path;
    EXPECT_EQ(FilesIn("data"), left);
  }

  // --- The window

  void FillField(const QString& name, const std::string& text) {
    QLineEdit* const field = static_cast<QComboBox*>(Named(name))->lineEdit();
    field->setFocus();
    field->selectAll();
    Type(*field, text);
  }
  // Letters that aren't on every keyboard too.
  static void Type(QWidget& field, const std::string& text) {
    QInputMethodEvent event;
    event.setCommitString(QString::fromStdString(text));
    QCoreApplication::sendEvent(&field, &event);
  }
  void ShowCriteria(ScopeTab tab) { ClickTab("Criteria", tab); }
  void ClickTab(const QString& name, int tab) {
    auto* const tabs = static_cast<QTabBar*>(Named(name));
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(tab - 1).center());
  }
  void Add(const std::string& folder) {
    FillField("Folder", At(folder));
    Click(Button("Add>"));
  }
  void ClickHeader(int column) {
    const QHeaderView& header = *static_cast<QTreeView*>(Named("Duplicates"))->header();
    const int x = header.sectionViewportPosition(column - 1) + header.sectionSize(column - 1) / 2;
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, {x, header.height() / 2});
  }
  // One of the messages that can be silenced, which is told not to come again.
  void ExpectLastTime(const QString& title, const QString& text) {
    script_.Expect(title, [text](QWidget& window) {
      EXPECT_NE(Find<QLabel>(window, text), nullptr);
      ClickBox(window, "Don't show this dialog again.");
      Click(Find<QPushButton>(window, "OK"));
    });
  }
  void SearchAgain() {
    script_.ExpectBox("Search completed", Report(8, 1, "8, 2 group(s)", "0, 0 group(s)"));
    Click(Button("Search"));
    EXPECT_TRUE(script_.IsDone());
    EXPECT_EQ(PathsOf(ResultList::ZeroSize), std::vector{At(kTarget + "empty")});
    EXPECT_EQ(PathsOf(ResultList::Portions), std::vector<std::string>());
    EXPECT_EQ(PathsOf(ResultList::ReadErrors), std::vector<std::string>());
    Files found;
    for (const std::string& path : PathsOf(ResultList::Duplicates)) found[path.substr(root_.size())] = ContentOf(path);
    Files expected = made_;
    for (const std::string& other : {kTarget + "empty", kOut + "three.txt", kHuge + "1", kHuge + "2"}) {
      expected.erase(other);
    }
    EXPECT_EQ(found, expected);
    ClickTab("Results", 2);
  }
  void InSmartMarker(ModalScript::Answer answer) {
    ByMenu("Result Files", "Smart Marker...", "Smart Marking", std::move(answer));
  }
  void Mark(int row) {
    GoTo(Named("Duplicates"));
    Key(Qt::Key_Home);
    while (Duplicates().SelectedItem() != row) Key(Qt::Key_Down);
    Key(Qt::Key_Space);
    EXPECT_TRUE(Duplicates().Checked(row));
  }

  // --- The lists

  std::vector<std::string> PathsOf(ResultList kind) {
    std::vector<std::string> paths;
    for (int row = 1; row <= List(kind).Count(); ++row) paths.push_back(PathOf(List(kind), row));
    return paths;
  }
  std::vector<std::string> Marked() {
    std::vector<std::string> marked;
    for (int row = 1; row <= Duplicates().Count(); ++row) {
      if (Duplicates().Checked(row)) marked.push_back(PathOf(Duplicates(), row).substr(root_.size()));
    }
    std::ranges::sort(marked);
    return marked;
  }
  // As dialogs about them name them, in the order of the list.
  QString MarkedLines() {
    QString lines;
    for (int row = 1; row <= Duplicates().Count(); ++row) {
      if (!Duplicates().Checked(row)) continue;
      lines += QString::fromStdString(PathOf(Duplicates(), row)).replace('\n', QStringLiteral("\u240A")) + "\n";
    }
    return lines;
  }
  int RowOf(const std::string& path) {
    const std::vector<std::string> paths = PathsOf(ResultList::Duplicates);
    return static_cast<int>(std::ranges::find(paths, At(path)) - paths.begin()) + 1;
  }
  // All cells and marks of all lists, in whatever order.
  std::set<std::string> AllRows() {
    std::set<std::string> rows;
    for (const ListView& list : Frm().results.lstResult) {
      for (int row = 1; row <= list.Count(); ++row) {
        std::string text = list.Checked(row) ? "marked" : "";
        for (int item = 0; item <= list.SubItems(row); ++item) text += "|" + list.Cell(row, item);
        rows.insert(text);
      }
    }
    return rows;
  }
  static std::string DateCell(std::time_t time) {
    char text[20];
    strftime(text, sizeof text, "%Y/%m/%d %H:%M:%S", localtime(&time));
    return text;
  }

  // --- The steps

  void MakeTheScope();
  void CancelTheFirstSearch();
  void KeepTheHugeFilesOutAndSearchAgain();
  void SortBySize();
  void MarkAllButTheNewest();
  void LookAtThePicture();
  void MoveWithFolders();
  void UndoByTheConsole();
  void MarkByPattern();
  void DeleteToTheTrash();
  void RestoreFromTheTrash();
  void ExportByName();
  void SaveAndLoad();
  void SetAnOptionAndQuit();
  void StartAnew();

  static constexpr std::time_t kOldTime = 1577880000;  // 2020-01-01 12:00 UTC
  static constexpr std::time_t kNewTime = 1609502400;  // 2021-01-01 12:00 UTC
  static constexpr std::uintmax_t kHugeSize = 64ULL << 30;

  Files made_;
  const std::vector<std::string> odd_ = {kTarget + "=1+1.txt", kTarget + "line\nend.txt",
                                         kTarget + "m\xC3\xBC\xC3\x9Fig.txt"};
  QSize firstSize_;
};

void WholeStoryTest::MakeTheScope() {
  Add(kTarget);
  ShowCriteria(kScopeTab);
  ChooseByMouse(*static_cast<QComboBox*>(Named("As")), "Search Area");
  ShowCriteria(kPathTab);
  FillField("File type", "*.txt;*.bmp");
  Add(kArea);
  ClickBox(View(), "Exclude");
  Add(kOut);
  const ListView& scope = Frm().lstPath;
  ASSERT_EQ(scope.Count(), 3);
  EXPECT_EQ(scope.Cell(1, kScopeTextItem), At(kTarget + "*.*"));
  EXPECT_EQ(scope.Cell(1, kSearchTargetItem), "Yes");
  EXPECT_EQ(scope.Cell(2, kScopeTextItem), At(kArea + "*.txt;*.bmp"));
  EXPECT_EQ(scope.Cell(2, kSearchTargetItem), "No");
  EXPECT_EQ(scope.Cell(3, kScopeTextItem), At(kOut));
  EXPECT_EQ(scope.SmallIcon(3), ScopeRow::kExcluded);
}

// It is the comparison that is stopped, which would go on for minutes.
void WholeStoryTest::CancelTheFirstSearch() {
  ExpectLastTime("Be patient",
                 "The search can be a lengthy process, the more files to search, the longer the search time is. It may "
                 "require hours of search time and may not response for a few minutes for very large files. Please be "
                 "patient and wait for completion.");
  Frm().tmrProgress.Listen([this, cancelled = false](const Notice& notice) mutable {
    const bool compares = Frm().msgBar.Text() == "Searching duplicated files ..." && Frm().tmrProgress.Tag() == "1";
    if (notice.when != Notice::When::After || !compares || std::exchange(cancelled, true)) return;
    QTimer::singleShot(0, &View(), [this] { Click(Button("Cancel")); });
  });
  script_.ExpectBox("Cancel Search", "Are you sure to cancel searching?", "Yes");
  script_.ExpectBox("Search completed", Report(10, 1, "0, 0 group(s)", "0, 0 group(s)"));
  ExpectLastTime(
      "Smart Marker",
      "You can now mark those files you want to delete or move by putting a tick to the box of the file. To "
      "mark files automatically, you can use 'Smart Marker' to mark duplicate files by date, folder, pattern, "
      "size and version. To do this, select menu 'Result Files' and then 'Smart Marker'.");
  Click(Button("Search"));
  EXPECT_TRUE(script_.IsDone());
  EXPECT_EQ(Frm().cmdSrch.Caption(), kSearchCaption);
  EXPECT_THAT(Frm().msgBar.Text(), testing::EndsWith(", searched 10 files."));
  EXPECT_EQ(Duplicates().Count(), 0) << "nothing half compared";
  ExpectAllAtHome();
}

void WholeStoryTest::KeepTheHugeFilesOutAndSearchAgain() {
  Add(kHuge);
  EXPECT_EQ(Frm().lstPath.Count(), 4);
  SearchAgain();
  ExpectAllAtHome();
}

void WholeStoryTest::SortBySize() {
  constexpr int kSizeColumn = 4;
  ClickHeader(kSizeColumn);
  EXPECT_EQ(Duplicates().Column(kSizeColumn).text, "v Size (Bytes)");
  EXPECT_EQ(Duplicates().Cell(1, 3), "        58");
  ClickHeader(kSizeColumn);
  EXPECT_EQ(Duplicates().Column(kSizeColumn).text, "^ Size (Bytes)");
  EXPECT_EQ(Duplicates().Cell(1, 3), "        14");
  EXPECT_EQ(Duplicates().Cell(8, 3), "        58");
}

void WholeStoryTest::MarkAllButTheNewest() {
  InSmartMarker([](QWidget& window) {
    EXPECT_NE(Find<QLabel>(window, "Mark those files fulfilling the following requirement:"), nullptr);
    ChooseByMouse(*static_cast<QComboBox*>(ByName(window, "By Date")), "Older File!");
    Click(Find<QPushButton>(window, "Mark"));
  });
  EXPECT_EQ(Marked(), (std::vector{odd_[0], kTarget + "blue.bmp", odd_[1], odd_[2], kTarget + "one, two.txt",
                                   kTarget + "say \"hi\" twice.txt"}));
}

void WholeStoryTest::LookAtThePicture() {
  const int blue = RowOf(kTarget + "blue.bmp");
  GoTo(Named("Duplicates"));
  Key(Qt::Key_End);
  while (Duplicates().SelectedItem() != blue) Key(Qt::Key_Up);
  WaitUntil([this] { return Frm().preview.imgPreview.Image() != nullptr; });
  EXPECT_EQ(Frm().preview.imgPreview.Image()->pixels.front(), 0xFF0000FFU);
  EXPECT_EQ(Frm().preview.txtFilename.Text(), "blue.bmp");
}

void WholeStoryTest::MoveWithFolders() {
  const std::vector<std::string> marked = Marked();
  InDialog("Move files", Qt::Key_M, Qt::ControlModifier, [&, this](QWidget& window) {
    EXPECT_EQ(window.findChild<QPlainTextEdit*>()->toPlainText(),
              "Are you sure to move the marked files to destination folder?\n" + MarkedLines());
    Type(*ByName(window, "Destination"), At("moved"));
    ClickBox(window, "Move with directory structure");
    Click(Find<QPushButton>(window, "Yes"));
  });
  ExpectGone(marked);
  Files moved;
  for (const std::string& path : marked) moved["moved" + root_ + path] = made_[path];
  EXPECT_EQ(FilesIn("moved"), moved);
  EXPECT_EQ(Duplicates().Count(), 2) << "the rows have gone with their files";
  EXPECT_EQ(Frm().preview.imgPreview.Image(), nullptr);
}

void WholeStoryTest::UndoByTheConsole() {
  EXPECT_EQ(SaysOf(TRESMOR_CLI " undo"), "6 items put back.\n");
  ExpectAllAtHome();
  EXPECT_THAT(FilesIn("moved"), IsEmpty());
}

void WholeStoryTest::MarkByPattern() {
  SearchAgain();
  InSmartMarker([](QWidget& window) {
    Press(window, Qt::Key_M, Qt::AltModifier);
    Type(*static_cast<QComboBox*>(ByName(window, "By Pattern"))->lineEdit(), kPattern);
    Click(Find<QPushButton>(window, "Mark"));
  });
  EXPECT_EQ(Marked(), odd_);
}

void WholeStoryTest::DeleteToTheTrash() {
  script_.Expect("Delete files", [this](QWidget& window) {
    EXPECT_EQ(
        window.findChild<QPlainTextEdit*>()->toPlainText(),
        "WARNING: Delete files at your own risk. You should make sure those files can be deleted safely, if you are "
        "not sure, just leave it here by clicking 'No'.\n\nAre you sure to delete the marked files?\n" +
            MarkedLines());
    EXPECT_NE(Find<QLabel>(window,
                           "RECOMMENDATION: It is recommended you move files to a temporary folder for keeping "
                           "some time before deletion."),
              nullptr);
    QWidget* const toTrash = ByName(window,
                                    "Move to recycle bin (*If the property of recycle bin is set to 'do not move "
                                    "file to recycle bin', files will be deleted permanently at any rate.)");
    EXPECT_TRUE(static_cast<QRadioButton*>(toTrash)->isChecked());
    Click(Find<QPushButton>(window, "Yes"));
  });
  script_.ExpectBox("Deleting files", "Move these 3 items to the recycle bin?", "Yes");
  Key(Qt::Key_D, Qt::ControlModifier);
  WaitUntil([this] { return script_.IsDone() && QApplication::activeModalWidget() == nullptr; });
  ExpectGone(odd_);
  const std::string trash = "home/.local/share/Trash/files/";
  Files thrown;
  for (const std::string& path : odd_) thrown[trash + path.substr(kTarget.size())] = made_[path];
  EXPECT_EQ(FilesIn(trash), thrown);
  EXPECT_EQ(Duplicates().Count(), 5);
}

// By the desktop's own program where there is one, else by what Tresmor noted for it.
void WholeStoryTest::RestoreFromTheTrash() {
  const std::string trash = "home/.local/share/Trash/";
  if (HasDesktop()) {
    RestoreAllByGio();
  } else {
    for (const auto& [path, content] : FilesIn(trash + "info")) {
      const QString noted = QString::fromStdString(content).section("Path=", 1).section('\n', 0, 0);
      const std::string name = std::filesystem::path(path).stem();
      std::filesystem::rename(At(trash + "files/" + name), QUrl::fromPercentEncoding(noted.toUtf8()).toStdString());
      std::filesystem::remove(At(path));
    }
  }
  EXPECT_THAT(FilesIn(trash), IsEmpty());
  ExpectAllAtHome();
  EXPECT_EQ(SaysOf(TRESMOR_CLI " undo"), "There is nothing to undo.\n") << "they are back already";
  SearchAgain();
}

void WholeStoryTest::ExportByName() {
  ClickHeader(1);
  if (Duplicates().Column(1).text != "^ Name") ClickHeader(1);
  ExpectFile("Tresmor - Export search result list", At("home/list"));
  script_.Expect("Open?", [this](QWidget& window) {
    EXPECT_EQ(static_cast<QMessageBox&>(window).text().toStdString(),
              "Result list is successfully exported, open it now? \n" + At("home/list.csv"));
    Click(Find<QPushButton>(window, "No"));
  });
  GoTo(Named("Duplicates"));
  Key(Qt::Key_X, Qt::ControlModifier);
  EXPECT_TRUE(script_.IsDone());

  Sheet expected = {{"^ Name", "In Folder", "Duplicate #", "Size (Bytes)", "Date Modified"}};
  const auto groupOf = [this](const std::string& path) {
    return QString::fromStdString(Duplicates().Cell(RowOf(path), 2)).trimmed().toStdString();
  };
  for (const std::string& path : {odd_[0], kArea + "blue copy.bmp", kTarget + "blue.bmp", odd_[1], odd_[2],
                                  kTarget + "one, two.txt", kTarget + "say \"hi\" twice.txt", kArea + "two.txt"}) {
    const std::size_t name = path.find_last_of('/') + 1;
    expected.push_back({path.substr(name), At(path.substr(0, name)), groupOf(path), std::to_string(made_[path].size()),
                        DateCell(path.starts_with(kArea) ? kNewTime : kOldTime)});
  }
  std::string text = "^ Name,In Folder,Duplicate #,Size (Bytes),Date Modified,File version\r\n";
  for (auto row = expected.begin() + 1; row != expected.end(); ++row) {
    text += '"' + (*row)[0] + "\",\"" + (*row)[1] + "\"," + (*row)[2] + "," + (*row)[3] + "," + (*row)[4] + "\r\n";
  }
  EXPECT_EQ(ContentOf(At("home/list.csv")), text);
  expected[0].push_back("File version");
  if (HasDesktop()) {
    MakeFolder("calc");
    EXPECT_EQ(OpenedByCalc(At("home/list.csv"), At("calc")), expected);
  }
}

void WholeStoryTest::SaveAndLoad() {
  Mark(RowOf(kTarget + "line\nend.txt"));
  const std::set<std::string> rows = AllRows();
  ExpectFile("Tresmor - Save search session as", At("home/mine"));
  script_.ExpectBox("Include search result",
                    "Do you want to include your search result in addition to search parameters?", "Yes");
  Key(Qt::Key_S, Qt::ControlModifier);
  const std::string shown =
      SaysOf(TRESMOR_CLI " show --types duplicates --format groups0 '" + At("home/mine.Tresmor") + "'");
  for (const std::string& path : PathsOf(ResultList::Duplicates)) {
    EXPECT_NE(shown.find(path + '\0'), std::string::npos) << "the console reads the window's session: " << path;
  }
  Key(Qt::Key_N, Qt::AltModifier);
  WaitUntil([this] { return Frm().lstPath.Count() == 0; });
  EXPECT_EQ(Duplicates().Count(), 0);
  ExpectFile("Tresmor - load search session", At("home/mine.Tresmor"));
  Key(Qt::Key_L, Qt::ControlModifier);
  EXPECT_TRUE(script_.IsDone());
  EXPECT_EQ(Frm().lstPath.Count(), 4);
  EXPECT_EQ(AllRows(), rows);
  ExpectAllAtHome();
}

void WholeStoryTest::SetAnOptionAndQuit() {
  ByMenu("Menu", "Options", "Options", [](QWidget& window) {
    ClickBox(window, "Disable Tool tips");
    Click(Find<QPushButton>(window, "OK"));
  });
  ClickMenu("Menu", "Quit");
  EXPECT_EQ(closed_, 1);
  Stop();
}

void WholeStoryTest::StartAnew() {
  Start();
  EXPECT_EQ(View().size(), firstSize_);
  EXPECT_EQ(Button("Search")->toolTip(), "");
  EXPECT_EQ(Frm().lstPath.Count(), 0);
  // As many folders are kept as there are file types.
  EXPECT_EQ(Frm().txtExt.List(0), "*.txt;*.bmp");
  EXPECT_EQ(Frm().txtExt.List(1), "*.*");
  EXPECT_EQ(Frm().txtExt.List(2), kSeparator);
  EXPECT_EQ(Frm().txtPath.List(0), At(kHuge));
  EXPECT_EQ(Frm().txtPath.List(1), At(kOut));
  EXPECT_EQ(Frm().txtPath.List(2), kSeparator);
  // The session has all else; the messages that were silenced stay so.
  ExpectFile("Tresmor - load search session", At("home/mine.Tresmor"));
  Key(Qt::Key_L, Qt::ControlModifier);
  SearchAgain();
  InSmartMarker([](QWidget& window) {
    EXPECT_EQ(static_cast<QComboBox*>(ByName(window, "By Pattern"))->itemText(0).toStdString(), kPattern);
    Press(window, Qt::Key_Escape);
  });
  ExpectAllAtHome();
}

TEST_F(WholeStoryTest, NothingIsLostFromTheFirstSearchToTheNextStart) {
  Start();
  firstSize_ = View().size();
  MakeTheScope();
  CancelTheFirstSearch();
  KeepTheHugeFilesOutAndSearchAgain();
  SortBySize();
  MarkAllButTheNewest();
  LookAtThePicture();
  MoveWithFolders();
  UndoByTheConsole();
  MarkByPattern();
  DeleteToTheTrash();
  RestoreFromTheTrash();
  ExportByName();
  SaveAndLoad();
  SetAnOptionAndQuit();
  StartAnew();
}

}  // namespace
}  // namespace tresmor::tests
