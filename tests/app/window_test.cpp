// The window under the user's hands: its edges, tabs, keys and the frame that closes it.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QTimer>
#include <QWindow>
#include <cmath>

#include "app/app_world.h"
#include "shell/layout.h"

namespace tresmor::tests {
namespace {

class WindowTest : public AppTest {
 protected:
  WindowTest() {
    Start();
    layouts_ = 0;
    Frm().OnResize = [this, layOut = Frm().OnResize] {
      ++layouts_;
      layOut();
    };
  }
  // Prepares a search that takes its time; `deed` is done as soon as it runs.
  void OnceSearching(const std::function<void()>& deed) {
    for (const char* const name : {"data/1", "data/2"}) MakeSparse(name, 64LL << 30, 'x');
    AddFolder(At("data"));
    ExpectMessage("Be patient");
    Frm().cmdSrch.Listen([this, deed](const Notice& notice) {
      if (notice.what != Notice::What::Text || notice.when != Notice::When::After) return;
      if (Frm().cmdSrch.Caption() == kCancelCaption) QTimer::singleShot(0, &View(), deed);
    });
  }
  void AddResult(ResultList kind, const std::string& name) {
    Finding finding;
    finding.folder = At("data/");
    finding.name = name;
    AddResultItem(List(kind), finding);
  }
  void ClickTab(int tab) {
    auto* const tabs = static_cast<QTabBar*>(Named("Results"));
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(tab).center());
  }
  // The desktop's side of the window, which gives it any size.
  QWindow& Desktop() { return *View().windowHandle(); }
  // All that one sets off after the other.
  static void LetEventsIn() {
    for (int i = 0; i < 20; ++i) QCoreApplication::processEvents();
  }
  double TwipsPerPixel() const { return Twips::OfApplication().PerPixel(); }

  int layouts_ = 0;
};

TEST_F(WindowTest, ItHasTheProgramsIcon) { EXPECT_FALSE(View().windowIcon().pixmap(48, 48).isNull()); }

TEST_F(WindowTest, ItOpensWithTheSessionThatItWasStartedWith) {
  AddFolder(At("data"));
  ExpectFile("Tresmor - Save search session as", At("home/s.Tresmor"));
  script_.ExpectBox("Include search result",
                    "Do you want to include your search result in addition to search parameters?", "No");
  Frm().mnuSaveAsResultList.OnClick();
  Stop();
  Start(At("home/s.Tresmor"));
  ASSERT_EQ(Frm().lstPath.Count(), 1);
  EXPECT_EQ(Frm().lstPath.Cell(1, 0), At("data/*.*"));
  EXPECT_EQ(Frm().session.SessionFile, At("home/s.Tresmor"));
}

// Calls a handler before each event of one kind.
class EventWatch : public QObject {
 public:
  EventWatch(QObject& object, QEvent::Type type, std::function<void()> handler)
      : QObject(&object), type_(type), handler_(std::move(handler)) {
    object.installEventFilter(this);
  }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == type_) handler_();
    return false;
  }

 private:
  const QEvent::Type type_;
  const std::function<void()> handler_;
};

void Watch(QObject& object, QEvent::Type type, std::function<void()> handler) {
  new EventWatch(object, type, std::move(handler));  // the object's child
}

TEST_F(WindowTest, TheTabOnShowLaysOutNothing) {
  ClickTab(0);
  EXPECT_EQ(layouts_, 0);
  ClickTab(2);
  EXPECT_EQ(layouts_, 1);
  EXPECT_TRUE(Named("Same Name")->isVisible());
  EXPECT_FALSE(Named("Zero Size")->isVisible());
}

TEST_F(WindowTest, EdgesSnapBackToTheLeastSize) {
  const QSize least = View().size();
  const float list = List(ResultList::ZeroSize).Height();
  Desktop().resize(least.width(), 60);
  WaitUntil([&] { return View().height() >= least.height(); });
  EXPECT_EQ(View().height(), least.height());
  EXPECT_EQ(List(ResultList::ZeroSize).Height(), list) << "there is no room to lay it out";
  Desktop().resize(300, least.height());
  WaitUntil([&] { return View().width() > 300; });
  EXPECT_GE(Frm().Width(), 10000);
  View().resize(least.width() + 100, least.height() + 300);
  EXPECT_GT(List(ResultList::ZeroSize).Height(), list);
  EXPECT_EQ(Frm().frmFileOp.Left(), Frm().Width() - Frm().frmFileOp.Width() - 160);
}

TEST_F(WindowTest, TheDesktopIsToldTheLeastSize) {
  View().resize(1, 1);
  EXPECT_EQ(View().size(), View().minimumSize());
  EXPECT_EQ(Desktop().minimumSize(), View().minimumSize());
  EXPECT_LE(10000, Frm().Width());
  EXPECT_GT(10000 + Frm().Width() / static_cast<float>(View().frameGeometry().width()), Frm().Width());
  EXPECT_EQ(View().frameGeometry().height(), std::ceil(LeastHeight(Frm()) / TwipsPerPixel() - 0.01));
}

// Whatever the window asks for, the desktop gives it its own size again.
TEST_F(WindowTest, ADesktopThatRefusesIsAskedOnce) {
  const QSize given(300, 200);
  int asked = 0;
  Desktop().resize(given);
  Watch(View(), QEvent::Resize, [&] {
    if (View().size() == given) return;
    ++asked;
    QTimer::singleShot(0, &View(), [&] { Desktop().resize(given); });
  });
  WaitUntil([&] { return asked > 0 && View().size() == given; });
  const int askedFirst = asked;
  LetEventsIn();
  EXPECT_EQ(asked, askedFirst);
  EXPECT_EQ(View().size(), given);
  EXPECT_EQ(Frm().Width(), static_cast<float>(View().frameGeometry().width() * TwipsPerPixel()));
}

TEST_F(WindowTest, AWindowThatFillsTheScreenKeepsTheDesktopsSize) {
  for (const Qt::WindowState state : {Qt::WindowMaximized, Qt::WindowFullScreen}) {
    View().setWindowState(state);
    LetEventsIn();
    const QRect place = View().geometry();
    Frm().Height = 9000;
    Frm().Left = 300;
    LetEventsIn();
    EXPECT_EQ(View().geometry(), place);
    EXPECT_EQ(View().windowState(), state);
    EXPECT_EQ(Frm().State(), WindowState::Maximised);
    View().setWindowState(Qt::WindowNoState);
    EXPECT_EQ(Frm().State(), WindowState::Normal);
  }
}

TEST_F(WindowTest, ItOpensWithTheRoomThatItWasDrawnWithAndAFrameAround) {
  EXPECT_EQ(View().width(), std::ceil(10140 / TwipsPerPixel() - 0.01));
  const int frame = View().frameGeometry().width() - View().width();
  EXPECT_GT(frame, 0);
  EXPECT_EQ(Frm().Width(), static_cast<float>((View().width() + frame) * TwipsPerPixel()));
  EXPECT_EQ(Frm().fraSrch.Left(), Frm().Width() - Frm().fraSrch.Width() - 160);
}

TEST_F(WindowTest, AShortcutGoesByTheRuleOfItsMenu) {
  ASSERT_TRUE(Frm().mnuRen.Enabled());
  Button("Add>")->setFocus();
  Key(Qt::Key_R, Qt::ControlModifier);  // which would ask for a file first
  EXPECT_FALSE(Frm().mnuRen.Enabled());
  AddResult(ResultList::ZeroSize, "some");
  script_.ExpectBox("Select file", "Please select a file.");
  Key(Qt::Key_R, Qt::ControlModifier);
  EXPECT_TRUE(script_.IsDone());
  Frm().mnuFile.Enabled = false;
  Key(Qt::Key_R, Qt::ControlModifier);
}

TEST_F(WindowTest, APathLeavesItsListByTheDeleteKeyAndNotByEnter) {
  AddFolder(At("data"));
  Frm().lstPath.SetSelected(1, true);
  GoTo(Named("Paths"));
  Key(Qt::Key_Return);
  Key(Qt::Key_Enter);
  EXPECT_EQ(Frm().lstPath.Count(), 1);
  Key(Qt::Key_Delete);
  EXPECT_EQ(Frm().lstPath.Count(), 0);
}

TEST_F(WindowTest, TheKeysOfAFieldStayItsOwn) {
  AddResult(ResultList::ZeroSize, "some");
  List(ResultList::ZeroSize).SetChecked(1, true);
  Frm().txtPath.SetText("typed");
  GoTo(Named("Folder"));
  Key(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(FolderField()->selectedText(), "typed");
  Key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "typed");
  Key(Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(Frm().txtPath.Text(), "");
  Key(Qt::Key_V, Qt::ControlModifier);
  Key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Frm().txtPath.Text(), "typedtyped");
  EXPECT_TRUE(List(ResultList::ZeroSize).Checked(1));
  Button("Add>")->setFocus();
  Key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_FALSE(List(ResultList::ZeroSize).Checked(1)) << "elsewhere they are the menu's";
}

TEST_F(WindowTest, AFieldThatTakesNoTypingKeepsItsKeysToo) {
  AddResult(ResultList::ZeroSize, "some");
  List(ResultList::ZeroSize).SetChecked(1, true);
  Frm().preview.txtFilename.Text = "some";
  QWidget* const field = Named("File on show");
  field->setFocus();
  Activate();
  for (const Qt::Key key : {Qt::Key_A, Qt::Key_C, Qt::Key_X, Qt::Key_V})
    QTest::keyClick(field, key, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "some");
  EXPECT_EQ(Frm().preview.txtFilename.Text(), "some");
  EXPECT_TRUE(List(ResultList::ZeroSize).Checked(1));
}

TEST_F(WindowTest, ASizeThatIsNoNumberIsToldWhenItsFieldIsLeft) {
  Frm().TabPath.Select(kFileSizeTab);
  QWidget* const field = Named("Min File Size");
  field->setFocus();
  QTest::keyClicks(field, "abc");
  script_.ExpectBox("Tresmor", "Invalid file size.");
  Key(Qt::Key_Tab);
  EXPECT_TRUE(script_.IsDone());
  Activate();
  EXPECT_TRUE(field->hasFocus());
  script_.ExpectBox("Tresmor", "Invalid file size.");
  Click(Button("Add>"));
  EXPECT_TRUE(script_.IsDone());
  Activate();
  EXPECT_TRUE(field->hasFocus());
  EXPECT_FALSE(Button("Add>")->isDown());
  script_.ExpectBox("Tresmor", "Invalid file size.");
  auto* const tabs = static_cast<QTabBar*>(Named("Criteria"));
  QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(0).center());
  EXPECT_TRUE(script_.IsDone());
  EXPECT_EQ(Frm().TabPath.SelectedTab(), kFileSizeTab);
  EXPECT_TRUE(field->isVisible());
  EXPECT_EQ(Frm().CurPathTab, kFileSizeTab - 1);
  EXPECT_FALSE(Frm().frmPath[0].Visible());
}

TEST_F(WindowTest, ASearchIsCancelledBeforeTheWindowCloses) {
  OnceSearching([this] {
    EXPECT_FALSE(Named("Paths")->isEnabled());
    EXPECT_FALSE(View().close());
    Click(Button("Cancel"));
    EXPECT_EQ(Frm().cmdSrch.Caption(), kCancelCaption) << "it goes on after a No";
    Click(Button("Cancel"));
  });
  script_.ExpectBox("Quit", "Please cancel your search before quitting.");
  script_.ExpectBox("Cancel Search", "Are you sure to cancel searching?", "No");
  script_.Expect("Cancel Search", [](QWidget& window) { QTest::keyClick(&window, Qt::Key_Y, Qt::AltModifier); });
  script_.Expect("Search completed", [](QWidget& window) { Find<QPushButton>(window, "OK")->click(); });
  ExpectMessage("Smart Marker");
  Click(Button("Search"));
  EXPECT_TRUE(script_.IsDone());
  EXPECT_EQ(closed_, 0);
  EXPECT_TRUE(Named("Paths")->isEnabled());
  EXPECT_TRUE(View().close());
  EXPECT_EQ(closed_, 1);
}

TEST_F(WindowTest, ClosedWhileItsFirstSessionLoadsTheProgramEnds) {
  Stop();
  MakeFile("data/s.Tresmor", "3.0.0\r\nFalse\r\nTrue\r\nTrue\r\nFalse\r\n 0 \r\n 1 \r\n 0 \r\n 1 \r\n" + At("data") +
                                 "/*.*|-Yes|-|-|-|-Yes|-True\r\nFalse\r\n 4 \r\n 0 \r\n\r\n 0 \r\n\r\n"
                                 " 0 \r\n\r\n 0 \r\n\r\n");
  Make(BuildFolder());
  bool closed = false;
  Frm().lstPath.Listen([&](const Notice& notice) {
    if (notice.what != Notice::What::RowsAdded || closed) return;
    closed = true;
    EXPECT_FALSE(View().close()) << "not before the load has ended";
  });
  QTimer::singleShot(std::chrono::seconds(20), &View(), [] { QApplication::exit(1); });
  EXPECT_EQ(program_->Run(At("data/s.Tresmor")), 0);
  EXPECT_TRUE(closed);
  EXPECT_FALSE(Frm().Visible());
}

TEST_F(WindowTest, IconsGoWithTheColoursOfTheDesktop) {
  const QPalette usual = QApplication::palette();
  QPalette dark(Qt::black);
  for (const QPalette& palette : {dark, QPalette(Qt::lightGray), dark}) {
    QApplication::setPalette(palette);
    QEvent told(QEvent::PaletteChange);  // which the toolkit sends from within its own loop alone
    QApplication::sendEvent(&View(), &told);
    const bool isDark = palette.color(QPalette::Window).lightness() < 128;
    EXPECT_EQ(QIcon::fallbackThemeName(), isDark ? "breeze-dark" : "breeze");
  }
  QApplication::setPalette(usual);
}

// The menu of F5 is off meanwhile.
TEST_F(WindowTest, ASearchIsCancelledByTheKeyOfItsButtonAndNotByF5) {
  OnceSearching([this] {
    Key(Qt::Key_F5);
    EXPECT_EQ(Frm().cmdSrch.Caption(), kCancelCaption);
    script_.Expect("Cancel Search", [](QWidget& window) { QTest::keyClick(&window, Qt::Key_Y, Qt::AltModifier); });
    script_.Expect("Search completed", [](QWidget& window) { Find<QPushButton>(window, "OK")->click(); });
    ExpectMessage("Smart Marker");
    Key(Qt::Key_C, Qt::AltModifier);
  });
  Key(Qt::Key_F5);
  EXPECT_TRUE(script_.IsDone());
  EXPECT_EQ(Frm().cmdSrch.Caption(), kSearchCaption);
}

}  // namespace
}  // namespace tresmor::tests
