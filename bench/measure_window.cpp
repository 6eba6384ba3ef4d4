// Measures how the window answers: measure_window [PART...] of lists, search, sessions, operations, pictures, smart and
// start; all of them if none is named. Without a display of its own choosing (QT_QPA_PLATFORM=xcb for the one of
// DISPLAY) it paints into memory.
//
// A user's step is timed until all that it set off is done and the window painted anew, and is to take 100 ms, a sort 2
// seconds. During long work a watchdog looks for the longest time in which the window did not answer. Files are made in
// a new folder among the temporary ones, up to 4 GB and a million files, and go at the end.
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QAction>
#include <QDialog>
#include <QHeaderView>
#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QTabBar>
#include <QTreeView>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <memory>

#include "app/window_program.h"
#include "findings.h"
#include "platform/posix/program_folder.h"
#include "results/rows.h"
#include "window_bench.h"

namespace {

using namespace tresmor;
namespace fs = std::filesystem;

constexpr std::size_t kRows = 1'000'000;
constexpr int kRounds = 9;

class Bench {
 public:
  explicit Bench(const FileWriters& writers)
      : program_(std::make_unique<WindowProgram>(writers, FindUserFolders(), FindExecutableFolder())) {
    program_->Start([] {});
  }

  void Lists();
  void Search();
  void Sessions();
  void Operations();
  void Pictures();
  void Smart();

 private:
  FrmMain& Frm() { return program_->Window().frm; }
  ListView& Duplicates() { return Frm().results.List(ResultList::Duplicates); }
  QTreeView& ShownTree();
  void Fill(std::size_t rows, std::size_t folders = kFindingFolders);
  void Key(int key, Qt::KeyboardModifiers modifiers = {});
  void Mouse(QEvent::Type type, QPoint at, Qt::MouseButton button = Qt::NoButton);
  void Click(QPoint at);
  // One step of the user's, up to a window that is painted anew and has nothing left to do.
  double Step(const std::function<void()>& step);
  void Time(const std::string& what, const std::function<void(int)>& step, const std::function<void()>& before = {});
  void Scrolling();
  void Clicks();
  void Marks();
  void Layout();
  void Sorts();
  double InSmartMarking(const std::function<void(QDialog&)>& deed);
  void SearchIn(const std::string& what, const fs::path& folder, std::vector<int> types);
  void MakeMany(const fs::path& folder);
  void MakeLarge(const fs::path& folder);

  Scratch scratch_;
  Answers answers_;
  std::unique_ptr<WindowProgram> program_;
  Watchdog watchdog_{[this] { return Frm().msgBar.Text(); }};
};

QTreeView& Bench::ShownTree() {
  for (QTreeView* const tree : program_->View().findChildren<QTreeView*>()) {
    if (tree->isVisible() && tree->model()->rowCount() == Frm().results.Shown().Count()) return *tree;
  }
  std::fputs("no list is on show\n", stderr);
  std::exit(1);
}

void Bench::Fill(std::size_t rows, std::size_t folders) {
  Frm().cmdNewSrch.OnClick();
  Duplicates().Visible = false;
  for (const Finding& finding : MakeFindings(rows, 2000, folders)) AddResultItem(Duplicates(), finding);
  Frm().results.tabMain.Select(static_cast<std::int32_t>(ResultList::Duplicates) + 1);
  Duplicates().Visible = true;
  ShowResult(Frm());
  PumpUntil([] { return true; });
}

void Bench::Key(int key, Qt::KeyboardModifiers modifiers) {
  const QString text = key >= Qt::Key_A && key <= Qt::Key_Z ? QString(QChar(key)) : QString();
  QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
  QApplication::sendEvent(&ShownTree(), &press);
}

void Bench::Mouse(QEvent::Type type, QPoint at, Qt::MouseButton button) {
  QWidget* const viewport = ShownTree().viewport();
  QMouseEvent event(type, QPointF(at), QPointF(viewport->mapToGlobal(at)), button,
                    type == QEvent::MouseButtonPress ? button : Qt::NoButton, Qt::NoModifier);
  QApplication::sendEvent(viewport, &event);
}

void Bench::Click(QPoint at) {
  Mouse(QEvent::MouseButtonPress, at, Qt::LeftButton);
  Mouse(QEvent::MouseButtonRelease, at, Qt::LeftButton);
}

double Bench::Step(const std::function<void()>& step) {
  return Milliseconds([&] {
    step();
    QApplication::processEvents();
    program_->View().repaint();
  });
}

void Bench::Time(const std::string& what, const std::function<void(int)>& step, const std::function<void()>& before) {
  std::vector<double> times;
  for (int round = 0; round < kRounds; ++round) {
    if (before) before();
    times.push_back(Step([&] { step(round); }));
  }
  Print(what, times, kAnswerMilliseconds);
}

void Bench::Scrolling() {
  Time("Page Down", [&](int) { Key(Qt::Key_PageDown); });
  Time(
      "End", [&](int) { Key(Qt::Key_End); }, [&] { Key(Qt::Key_Home); });
  Time(
      "Home", [&](int) { Key(Qt::Key_Home); }, [&] { Key(Qt::Key_End); });
  QScrollBar& bar = *ShownTree().verticalScrollBar();
  Time("a page by the scroll bar", [&](int) { bar.triggerAction(QScrollBar::SliderPageStepAdd); });
  Time("a jump by the scroll bar", [&](int round) { bar.setValue(bar.maximum() / kRounds * round); });
}

void Bench::Clicks() {
  Time("a click on a row", [&](int round) { Click({120, 30 + 10 * round}); });
  Time("a click on a mark", [&](int round) { Click({8, 30 + 10 * round}); });
  Time("moving over the rows", [&](int round) { Mouse(QEvent::MouseMove, {120, 30 + 10 * round}); });
  Time(
      "Shift+End, selecting all", [&](int) { Key(Qt::Key_End, Qt::ShiftModifier); }, [&] { Key(Qt::Key_Home); });
  Time("Space, marking all or none", [&](int) { Key(Qt::Key_Space); });
  Time("recount of a million marked and selected", [&](int) { Frm().tmrUpdate.OnTick(); });
  Time(
      "a click where all was selected",
      [&](int) {
        Click({120, 40});
      },
      [&] {
        Key(Qt::Key_Home);
        Key(Qt::Key_End, Qt::ShiftModifier);
      });
  Time("a letter that no name begins with", [&](int) { Key(Qt::Key_Z); });
}

void Bench::Marks() {
  Time(
      "Mark All, with its message", [&](int) { Frm().mnuMarkAll.OnClick(); }, Frm().mnuClearMarks.OnClick);
  Time(
      "Clear Marks", [&](int) { Frm().mnuClearMarks.OnClick(); }, Frm().mnuMarkAll.OnClick);
  Key(Qt::Key_Home);
  Key(Qt::Key_End, Qt::ShiftModifier);
  Time(
      "Mark Selected", [&](int) { Frm().mnuMarkSelected.OnClick(); }, Frm().mnuClearMarks.OnClick);
}

void Bench::Layout() {
  const QSize size = program_->View().size();
  Time("a resize", [&](int round) { program_->View().resize(size + QSize(10 * round, 10 * round)); });
  Time("a change of tabs, away and back", [&](int) {
    Frm().results.tabMain.Select(static_cast<std::int32_t>(ResultList::ZeroSize) + 1);
    QApplication::processEvents();
    Frm().results.tabMain.Select(static_cast<std::int32_t>(ResultList::Duplicates) + 1);
  });
  Time("hiding the list and showing it", [&](int) {
    Duplicates().Visible = false;
    Duplicates().Visible = true;
  });
}

void Bench::Sorts() {
  for (std::int32_t column = 1; column <= Duplicates().Columns(); ++column) {
    if (Duplicates().Column(column).width == 0) continue;
    std::vector<double> times;
    for (int direction = 0; direction < 2; ++direction) {
      watchdog_.Watch("sort by column " + std::to_string(column),
                      [&] { times.push_back(Step([&] { Key(Qt::Key_0 + column, Qt::ControlModifier); })); });
    }
    Print("sort by column " + std::to_string(column) + ", both directions", times, kSortMilliseconds);
  }
}

void Bench::Lists() {
  Fill(kRows);
  std::printf("%d rows\n", Duplicates().Count());
  Scrolling();
  Clicks();
  Marks();
  Layout();
  Sorts();
}

void Bench::SearchIn(const std::string& what, const fs::path& folder, std::vector<int> types) {
  FrmMain& frm = Frm();
  frm.cmdNewSrch.OnClick();
  frm.txtPath.SetText(folder.string());
  frm.cmdAdd.OnClick();
  for (int type = 0; type < frm.lstSrchType.Count(); ++type) {
    frm.lstSrchType.SetTicked(type, std::find(types.begin(), types.end(), type) != types.end());
  }
  watchdog_.Watch(what, [&] { frm.cmdSrch.OnClick(); });
  for (const ListView& list : frm.results.lstResult) std::printf("%d ", list.Count());
  std::printf("rows\n");
}

void Bench::MakeMany(const fs::path& folder) {
  constexpr std::size_t kInOneFolder = 1000;
  for (std::size_t i = 0; i < kRows; ++i) {
    const fs::path own = folder / std::to_string(i / kInOneFolder);
    if (i % kInOneFolder == 0) fs::create_directories(own);
    const std::ofstream file(own / (std::to_string(i % kInOneFolder) + ".txt"));
  }
}

void Bench::MakeLarge(const fs::path& folder) {
  constexpr std::uintmax_t kSparse = std::uintmax_t{8} << 30;
  constexpr int kMegabytes = 2048;
  fs::create_directories(folder);
  for (const char* const name : {"sparse1", "sparse2"}) {
    std::ofstream(folder / name).close();
    fs::resize_file(folder / name, kSparse);
  }
  const std::vector<char> megabyte(1U << 20, 'x');
  for (const char* const name : {"real1", "real2"}) {
    std::ofstream file(folder / name, std::ios::binary);
    for (int i = 0; i < kMegabytes; ++i) file.write(megabyte.data(), std::ssize(megabyte));
  }
}

void Bench::Search() {
  const fs::path large = scratch_.Folder() / "large";
  MakeLarge(large);
  SearchIn("search, 16 GiB of holes and 4 of bytes compared", large, {1});
  fs::remove_all(large);
  const fs::path many = scratch_.Folder() / "many";
  MakeMany(many);
  SearchIn("search, a million files of no size, each in two lists", many, {0, 2});
}

void Bench::Sessions() {
  Fill(kRows / 2);
  const fs::path file = scratch_.Folder() / "half a million.Tresmor";
  Frm().session.SessionFile = file.string();
  Frm().session.SaveSrchResult = true;
  answers_.fileToOpen = file.string();
  watchdog_.Watch("saving a session of 500,000 rows", Frm().mnuSaveResultList.OnClick);
  watchdog_.Watch("loading it", Frm().mnuLoadResultList.OnClick);
  std::printf("%d rows\n", Duplicates().Count());
  answers_.fileToOpen = (scratch_.Folder() / "list.csv").string();
  watchdog_.Watch("exporting the list", Frm().mnuExport.OnClick);
}

void Bench::Operations() {
  constexpr std::size_t kFiles = 20'000;
  const fs::path folder = scratch_.Folder() / "files";
  for (const char* const way : {"trashing", "deleting"}) {
    Fill(0);
    fs::create_directories(folder);
    for (std::size_t i = 0; i < kFiles; ++i) {
      Finding finding;
      finding.name = std::to_string(i) + ".txt";
      finding.folder = folder.string() + "/";
      std::ofstream(folder / finding.name) << i;
      AddResultItem(Duplicates(), finding);
    }
    Frm().mnuMarkAll.OnClick();
    FrmFileOper& form = program_->Window().Files().frmFileOper;
    form.optRecycleBin.Value = std::string(way) == "trashing";
    form.optDelPermanently.Value = !form.optRecycleBin.Value();
    watchdog_.Watch(std::string(way) + " 20,000 files", Frm().mnuDelete.OnClick);
    std::printf("%d rows left\n", Duplicates().Count());
  }
}

void Bench::Pictures() {
  constexpr int kPictures = 50;
  const fs::path folder = scratch_.Folder() / "pictures";
  fs::create_directories(folder);
  QImage image(6000, 4000, QImage::Format_RGB32);
  for (int y = 0; y < image.height(); ++y) {
    auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < image.width(); ++x) line[x] = qRgb(x * y >> 6 & 0xFF, x & 0xFF, y & 0xFF);
  }
  Fill(0);
  for (int i = 0; i < kPictures; ++i) {
    Finding finding;
    finding.name = std::to_string(100 + i) + ".jpg";
    finding.folder = folder.string() + "/";
    if (i == 0) image.save(QString::fromStdString((folder / finding.name).string()));
    if (i > 0) fs::copy_file(folder / "100.jpg", folder / finding.name);
    AddResultItem(Duplicates(), finding);
  }
  ShowResult(Frm());
  Frm().preview.chkPreview.Value = kTicked;
  watchdog_.Watch("walking over 50 pictures of 24 megapixels", [&] {
    for (int i = 0; i < kPictures; ++i) {
      Key(Qt::Key_Down);
      QElapsedTimer typed;
      typed.start();
      PumpUntil([&] { return typed.elapsed() > 100; });
    }
    PumpUntil([&] { return Frm().preview.imgPreview.Image() != nullptr; });
  });
}

// Does `deed` in the dialog and closes it if that hasn't. Gives the milliseconds from the choice in the menu until the
// dialog stood there, painted and with all its folders.
double Bench::InSmartMarking(const std::function<void(QDialog&)>& deed) {
  QAction* open = nullptr;
  for (QAction* const action : program_->View().findChildren<QAction*>()) {
    if (action->text().startsWith("&Smart Marker")) open = action;
  }
  double shown = 0;
  QElapsedTimer sinceChosen;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &look, [&] {
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || !dialog->isVisible()) return;
    look.stop();
    dialog->repaint();
    shown = static_cast<double>(sinceChosen.nsecsElapsed()) * 1e-6;
    deed(*dialog);
    if (dialog->isVisible()) dialog->reject();
  });
  look.start(0);
  sinceChosen.start();
  open->trigger();
  return shown;
}

void Bench::Smart() {
  constexpr std::size_t kFolders = 30'000;
  Fill(kRows / 2, kFolders);
  std::printf("%d rows\n", Duplicates().Count());
  for (const std::string what : {"Smart Marking", "Smart Marking again"}) {
    double shown = 0;
    int folders = 0;
    watchdog_.Watch(what + ", shown and closed", [&] {
      shown =
          InSmartMarking([&](const QDialog& dialog) { folders = dialog.findChild<QTreeView*>()->model()->rowCount(); });
    });
    std::printf("%d folders\n", folders);
    Print(what + ", shown", {shown}, kDialogMilliseconds);
  }
  Key(Qt::Key_Home);
  Key(Qt::Key_End, Qt::ShiftModifier);
  InSmartMarking([this](QDialog& dialog) {
    dialog.findChild<QTabBar*>()->setCurrentIndex(1);
    for (const char* const caption : {"Select All", "Clear All", "Get selections", "Mark"}) {
      watchdog_.Watch(caption, [&] {
        for (QPushButton* const button : dialog.findChildren<QPushButton*>()) {
          if (button->text() == caption) button->click();
        }
        dialog.repaint();
      });
    }
  });
  int marked = 0;
  for (std::int32_t row = 1; row <= Duplicates().Count(); ++row) marked += Duplicates().Checked(row) ? 1 : 0;
  std::printf("%d marked\n", marked);
}

// As main() of the program, to a window that is painted and has nothing left to do.
int StartOnce(const char* begin) {
  int argc = 1;
  char name[] = "tresmor";
  char* argv[] = {name, nullptr};
  const FileWriters writers;
  QApplication app(argc, argv);
  ChooseIconTheme();
  WindowProgram program(writers, FindUserFolders(), FindExecutableFolder());
  program.Start([] {});
  QTimer idle;
  QObject::connect(&idle, &QTimer::timeout, [] { QApplication::quit(); });
  program.View().repaint();
  idle.start(0);
  QApplication::exec();
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  std::printf("%lld\n", static_cast<long long>(std::chrono::nanoseconds(now).count() - std::atoll(begin)));
  std::fflush(stdout);
  std::_Exit(0);  // how it ends is not measured
}

// Each start is a process of its own.
void Start() {
  const Scratch user;
  const std::string self = fs::read_symlink("/proc/self/exe").string();
  std::vector<double> times;
  for (int round = 0; round <= kRounds; ++round) {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    FILE* const child = popen((self + " --once " + std::to_string(std::chrono::nanoseconds(now).count())).c_str(), "r");
    long long nanoseconds = 0;
    if (child == nullptr || std::fscanf(child, "%lld", &nanoseconds) != 1 || pclose(child) != 0) std::exit(1);
    if (round > 0) times.push_back(static_cast<double>(nanoseconds) * 1e-6);  // the first one warms up
  }
  Print("start to a painted window at rest", times, 300);
}

}  // namespace

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  if (argc == 3 && std::string(argv[1]) == "--once") return StartOnce(argv[2]);
  std::vector<std::string> parts(argv + 1, argv + argc);
  if (parts.empty()) parts = {"lists", "search", "sessions", "operations", "pictures", "smart", "start"};
  const FileWriters writers;
  QApplication app(argc, argv);
  ChooseIconTheme();
  const std::map<std::string, void (Bench::*)()> benches = {
      {"lists", &Bench::Lists},           {"search", &Bench::Search},     {"sessions", &Bench::Sessions},
      {"operations", &Bench::Operations}, {"pictures", &Bench::Pictures}, {"smart", &Bench::Smart}};
  for (const std::string& part : parts) {
    std::printf("\n%s\n", part.c_str());
    if (part == "start") {
      Start();
    } else if (const auto found = benches.find(part); found != benches.end()) {
      Bench bench(writers);
      (bench.*found->second)();
    } else {
      std::fprintf(stderr, "%s: no such part\n", part.c_str());
      return 2;
    }
  }
}
