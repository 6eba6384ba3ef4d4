#include "qt/main_window_view.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QShortcut>
#include <cmath>
#include <utility>

#include "qt/form_parts.h"
#include "qt/icons.h"
#include "qt/list_widget.h"
#include "qt/path_drops.h"
#include "qt/picture_widget.h"
#include "qt/tab_strip_widget.h"
#include "shell/layout.h"

namespace tresmor {
namespace {

template <class Widget, class Control>
Widget* Placed(Control& control, const Binder& binder, QWidget* owner) {
  auto* const widget = Bound<Widget>(control, binder, owner);
  binder.BindPlace(control, *widget);
  return widget;
}

QGridLayout* PageGrid(QWidget* page) {
  auto* const grid = new QGridLayout(page);
  grid->setContentsMargins(6, 4, 6, 4);
  grid->setVerticalSpacing(3);
  return grid;
}

// The icons of the menus, by the names of freedesktop.org's standard.
const char* IconNameOf(const MainMenu& menu, const MenuItem& item) {
  const std::map<const MenuItem*, const char*> names = {
      {&menu.mnuOptions, "configure"},
      {&menu.MnuQuit, "application-exit"},
      {&menu.mnuSrch, "edit-find"},
      {&menu.mnuNewSrch, "document-new"},
      {&menu.mnuLoadResultList, "document-open"},
      {&menu.mnuSaveResultList, "document-save"},
      {&menu.mnuSaveAsResultList, "document-save-as"},
      {&menu.mnuOpenEditor, "document-edit"},
      {&menu.mnuOpenFolder, "document-open-folder"},
      {&menu.mnuDelete, "edit-delete"},
      {&menu.mnuMove, "edit-move"},
      {&menu.mnuCopy, "edit-copy"},
      {&menu.mnuRen, "edit-rename"},
      {&menu.mnuExport, "document-export"},
      {&menu.mnuPropPage, "document-properties"},
      {&menu.mnuSmartDel, "tools-wizard"},
      {&menu.mnuMarkAll, "edit-select-all"},
      {&menu.mnuClearMarks, "edit-clear-all"},
      {&menu.mnuHelp, "help-contents"},
      {&menu.mnuAbout, "help-about"},
  };
  const auto found = names.find(&item);
  return found == names.end() ? nullptr : found->second;
}

}  // namespace

MainWindowView::MainWindowView(FrmMain& frm, const Binder& binder, const ListTip& tips)
    : frm_(frm), binder_(binder), tips_(tips), menuBar_(this), scroll_(this) {
  setWindowTitle(ShownLine(frm_.Caption()));
  setWindowIcon(ProgramIcon());
  scroll_.setFrameShape(QFrame::NoFrame);
  scroll_.setFocusPolicy(Qt::NoFocus);
  scroll_.setWidget(&canvas_);
  BuildMenus();
  BuildScope();
  BuildSearch();
  BuildResults();
  BuildFileOp();
  BuildStatusBar();
  binder_.Bind(frm_.pointer, *this);
  binder_.BindHelp(frm_, *this);
  Follow(frm_, *this, [this](const Notice& notice) {
    if (reporting_) return;
    if (notice.what == Notice::What::Place) Apply();
    if (notice.what == Notice::What::Text) setWindowTitle(ShownLine(frm_.Caption()));
    if (notice.what == Notice::What::Visible) setVisible(frm_.Visible());
  });
  const QSize drawn(RoundUp(frm_.ScaleWidth()), RoundUp(frm_.ScaleHeight()));
  resize((drawn + QSize(0, menuBar_.heightForWidth(drawn.width()))).boundedTo(MostSize()));
  LayOut();
}

void MainWindowView::BuildMenus() {
  for (Menu* const menu : frm_.Menus()) {
    QMenu* const shown = menuBar_.addMenu(Caption(menu->Caption()));
    binder_.BindHelp(*menu, *shown);
    connect(shown, &QMenu::aboutToShow, this, [this, menu] { binder_.Deliver(menu->OnOpen); });
    shown->menuAction()->setEnabled(menu->Enabled());
    Follow(*menu, *this, [menu, shown](const Notice& notice) {
      if (notice.what == Notice::What::Enabled) shown->menuAction()->setEnabled(menu->Enabled());
      if (notice.what == Notice::What::PopUp) shown->popup(QCursor::pos());
    });
    for (MenuItem* const item : menu->Items()) {
      if (item == nullptr) {
        shown->addSeparator();
      } else {
        AddItem(*menu, *item, *shown);
      }
    }
  }
}

// A shortcut is no part of the toolkit's action: whether the command may run now is worked out when its keys are typed.
void MainWindowView::AddItem(Menu& menu, MenuItem& item, QMenu& shown) {
  QString text = Caption(item.Caption());
  if (!item.Key().empty()) text += '\t' + QKeySequence(item.Key().c_str()).toString(QKeySequence::NativeText);
  QAction* const action = shown.addAction(text);
  if (const char* const icon = IconNameOf(frm_, item)) action->setIcon(ThemeIcon(icon));
  action->setEnabled(item.Enabled());
  binder_.BindItem(item, *action);
  connect(action, &QAction::triggered, this, [this, &item] { binder_.Deliver(item.OnClick); });
  Follow(item, *this, [action, &item](const Notice& notice) {
    if (notice.what == Notice::What::Enabled) action->setEnabled(item.Enabled());
  });
  if (item.Key().empty()) return;
  auto* const shortcut = new QShortcut(QKeySequence(item.Key().c_str()), this);
  connect(shortcut, &QShortcut::activated, this,
          [this, &menu, &item] { binder_.Deliver([&] { menu.Shortcut(item); }); });
}

void MainWindowView::BuildScope() {
  auto* const frame = Placed<QGroupBox>(frm_.frmSelPath, binder_, &canvas_);
  new TabStripWidget(frm_.TabPath, binder_, frame, "Criteria");
  BuildScopePages(*frame);
  Placed<QPushButton>(frm_.cmdAdd, binder_, frame);
  Placed<QPushButton>(frm_.cmdRemove, binder_, frame);
  ListLook look;
  look.icons = {QIcon(), ThemeIcon("folder"), ThemeIcon("dialog-cancel")};
  look.openingKeys = {Qt::Key_Delete};  // a double click removes the row
  look.hoverText = [this] { return TipOf(frm_.lstPath); };
  auto* const list = new ListWidget(frm_.lstPath, binder_, std::move(look), frame);
  list->setAccessibleName("Paths");
  binder_.BindPlace(frm_.lstPath, *list);
  new PathDrops(*frame, binder_, [this](const std::vector<std::string>& paths) {  // the frame's child
    if (frm_.lstPath.OnDrop) frm_.lstPath.OnDrop(paths);
  });
}

void MainWindowView::BuildScopePages(QWidget& frame) {
  std::array<QWidget*, 4> pages{};
  for (std::size_t i = 0; i < pages.size(); ++i) pages[i] = PlainFrame(frm_.frmPath[i], binder_, &frame);

  auto* grid = PageGrid(pages[0]);
  grid->addWidget(Bound<QComboBox>(frm_.txtPath, binder_, pages[0], "Folder"), 0, 0, 1, 2);
  grid->addWidget(Bound<QPushButton>(frm_.cmdBrowseFolder, binder_, pages[0]), 0, 2);
  grid->addWidget(Bound<QCheckBox>(frm_.chkSubDir, binder_, pages[0]), 0, 3);
  auto* const types = Bound<QComboBox>(frm_.txtExt, binder_, pages[0]);
  grid->addWidget(LabelOf("&File type:", types, pages[0]), 1, 0);
  grid->addWidget(types, 1, 1, 1, 2);
  grid->addWidget(Bound<QCheckBox>(frm_.chkExclude, binder_, pages[0]), 1, 3);
  grid->setColumnStretch(1, 1);

  grid = PageGrid(pages[1]);
  auto* const least = Bound<QLineEdit>(frm_.txtMinSz, binder_, pages[1]);
  auto* const most = Bound<QLineEdit>(frm_.txtMaxSz, binder_, pages[1]);
  grid->addWidget(LabelOf("Min File Size:", least, pages[1]), 0, 0);
  grid->addWidget(least, 0, 1);
  grid->addWidget(new QLabel("KB", pages[1]), 0, 2);
  grid->addWidget(LabelOf("Max File Size:", most, pages[1]), 1, 0);
  grid->addWidget(most, 1, 1);
  grid->addWidget(new QLabel("KB", pages[1]), 1, 2);
  grid->setColumnStretch(3, 1);

  grid = PageGrid(pages[2]);
  auto* const presets = Bound<QComboBox>(frm_.cmbDate, binder_, pages[2]);
  grid->addWidget(LabelOf("Date modified:", presets, pages[2]), 0, 0);
  grid->addWidget(presets, 0, 1);
  grid->addWidget(Bound<QLineEdit>(frm_.txtDate, binder_, pages[2], "Date"), 0, 2);
  grid->setColumnStretch(3, 1);
  grid->setRowStretch(1, 1);

  grid = PageGrid(pages[3]);
  auto* const role = Bound<QComboBox>(frm_.cmbSrchArea, binder_, pages[3]);
  grid->addWidget(LabelOf("As", role, pages[3]), 0, 0);
  grid->addWidget(role, 0, 1);
  grid->setColumnStretch(2, 1);
  grid->setRowStretch(1, 1);
}

void MainWindowView::BuildSearch() {
  QWidget* const frame = PlainFrame(frm_.fraSrch, binder_, &canvas_);
  auto* const options = Bound<QGroupBox>(frm_.fraSrchOpt, binder_, frame);
  auto* const column = new QVBoxLayout(options);
  column->setContentsMargins(4, 4, 4, 6);
  column->setSpacing(3);
  column->addWidget(Bound<QListWidget>(frm_.lstSrchType, binder_, options, "Search types"), 1);
  for (CheckBox* const box : {&frm_.chkTolerant, &frm_.chkHidden, &frm_.chkProtectWinDir, &frm_.chkVer}) {
    column->addWidget(Bound<QCheckBox>(*box, binder_, options));
  }
  auto* const buttons = new QHBoxLayout;
  buttons->addWidget(Bound<QPushButton>(frm_.cmdSrch, binder_, frame));
  buttons->addWidget(Bound<QPushButton>(frm_.cmdNewSrch, binder_, frame));
  auto* const layout = new QVBoxLayout(frame);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(options, 1);
  layout->addLayout(buttons);
}

void MainWindowView::BuildResults() {
  new TabStripWidget(frm_.results.tabMain, binder_, &canvas_, "Results");
  for (std::size_t i = 0; i < frm_.frmResult.size(); ++i) {
    ListView& list = frm_.results.lstResult[i];
    QWidget* const frame = PlainFrame(frm_.frmResult[i], binder_, &canvas_);
    ListLook look;
    look.checkBoxes = true;
    look.multiSelect = true;
    look.hoverText = [this, &list] { return TipOf(list); };
    auto* const widget = new ListWidget(list, binder_, std::move(look), frame);
    const QString caption = ShownLine(frm_.results.tabMain.Caption(static_cast<std::int32_t>(i) + 1));
    widget->setAccessibleName(caption.section('(', 0, 0));  // without its counts
    binder_.BindPlace(list, *widget);
  }
}

std::string MainWindowView::TipOf(const ListView& list) const {
  const auto found = tips_.texts.find(&list);
  return found == tips_.texts.end() ? std::string() : found->second;
}

void MainWindowView::BuildFileOp() {
  QWidget* const frame = PlainFrame(frm_.frmFileOp, binder_, &canvas_);
  auto* const layout = new QVBoxLayout(frame);
  // What a low window has no room for lies behind the status bar.
  const auto keepClear = [this, layout] {
    const float hidden = frm_.frmFileOp.Top() + frm_.frmFileOp.Height() - frm_.StatusBar1.Top();
    constexpr float kAboveStatus = 60;
    layout->setContentsMargins(0, 0, 0, std::max(0, binder_.Scale().ToPixels(hidden + kAboveStatus)));
  };
  keepClear();
  Follow(frm_.StatusBar1, *frame, [keepClear](const Notice& notice) {
    if (notice.what == Notice::What::Place) keepClear();
  });
  layout->addWidget(Bound<QPushButton>(frm_.cmdTask, binder_, frame));
  layout->addWidget(Bound<QCheckBox>(frm_.preview.chkPreview, binder_, frame));
  auto* const picture = new PictureWidget(frm_.preview.imgPreview, binder_, frame);
  picture->setAccessibleName("Preview");
  layout->addWidget(picture, 1);
  layout->addWidget(Bound<QLineEdit>(frm_.preview.txtFilename, binder_, frame, "File on show"));
}

void MainWindowView::BuildStatusBar() {
  auto* const bar = new QWidget(&canvas_);
  bar->setAutoFillBackground(true);  // it stands in front of what a low window has no room for
  binder_.BindState(frm_.StatusBar1, *bar);
  binder_.BindPlace(frm_.StatusBar1, *bar);
  Follow(frm_.StatusBar1, *this, [this](const Notice& notice) {
    if (notice.what == Notice::What::Place && !reporting_) Report();
  });
  auto* const text = new QLabel(bar);
  binder_.Bind(frm_.msgBar, *text);
  binder_.BindPlace(frm_.msgBar, *text);
  BuildProgressBar(*bar);
}

// It moves between the window and the status bar.
void MainWindowView::BuildProgressBar(QWidget& bar) {
  auto* const progress = new QProgressBar(&canvas_);
  progress->setAccessibleName("Progress");
  const auto seat = [this, progress, &bar] {
    progress->setParent(frm_.pbMain.Parent() == &frm_.StatusBar1 ? &bar : &canvas_);
    progress->setVisible(frm_.pbMain.Visible());
  };
  seat();
  binder_.Bind(frm_.pbMain, *progress);
  binder_.BindPlace(frm_.pbMain, *progress);
  Follow(frm_.pbMain, *progress, [seat](const Notice& notice) {
    if (notice.what == Notice::What::Parent) seat();
  });
}

int MainWindowView::RoundUp(float twips) const {
  constexpr double kHairsbreadth = 0.01;  // no pixel more for what single precision leaves behind the point
  return static_cast<int>(std::ceil(static_cast<double>(twips) / binder_.Scale().PerPixel() - kHairsbreadth));
}

QSize MainWindowView::InnerSize(float width, float height) const {
  return QSize(RoundUp(width), RoundUp(height)) - FrameSize();
}

WindowState MainWindowView::StateOnScreen() const {
  return isMinimized()                     ? WindowState::Minimised
         : isMaximized() || isFullScreen() ? WindowState::Maximised
                                           : WindowState::Normal;
}

QSize MainWindowView::MostSize() const { return screen()->availableSize() - FrameSize(); }

QSize MainWindowView::KeptRoom() const {
  constexpr float kLeastResult = 2400;  // of rows under the upper panels, for there to be something to see
  const QSize needed = InnerSize(kLeastWidth, LeastHeight(frm_) + kLeastResult);
  const QSize most = MostSize();
  return {needed.width() > most.width() ? needed.width() : 0,
          needed.height() > most.height() ? needed.height() - menuBar_.height() : 0};
}

void MainWindowView::Apply() {
  if (StateOnScreen() == WindowState::Normal) {
    const QSize inner = InnerSize(frm_.Width(), frm_.Height()).boundedTo(MostSize());
    const QPoint place = {binder_.Scale().ToPixels(frm_.Left()), binder_.Scale().ToPixels(frm_.Top())};
    if (isVisible() && place != frameGeometry().topLeft()) {
      const QRect room = screen()->availableGeometry();
      const QSize left = room.size() - inner - FrameSize();
      move(std::min(place.x(), room.x() + left.width()), std::min(place.y(), room.y() + left.height()));
    }
    if (!refused_ && inner != size()) resize(inner);
  }
  LayOut();
}

void MainWindowView::LayOut() {
  const int bar = menuBar_.heightForWidth(width());
  const QRect menus(0, 0, width(), bar);
  const QRect view(0, bar, width(), height() - bar);
  const QSize before = canvas_.size();
  const bool reframed = std::exchange(frame_, FrameSize()) != FrameSize();
  const bool moved = menuBar_.geometry() != menus || scroll_.geometry() != view;
  menuBar_.setGeometry(menus);
  scroll_.setGeometry(view);
  canvas_.resize(view.size().expandedTo(KeptRoom()));
  Report();
  if (reframed || moved || canvas_.size() != before) binder_.Deliver(frm_.OnResize);
  if (StateOnScreen() != WindowState::Normal) return;
  setMinimumSize(InnerSize(kLeastWidth, LeastHeight(frm_)).boundedTo(MostSize()));
  if (reframed) resize(size().boundedTo(MostSize()));
}

void MainWindowView::Report() {
  const QScopedValueRollback<bool> guard(reporting_, true);
  const Twips& twips = binder_.Scale();
  frm_.ScaleWidth = twips.FromPixels(canvas_.width());
  frm_.ScaleHeight = twips.FromPixels(canvas_.height());
  frm_.Width = twips.FromPixels(canvas_.width() + FrameSize().width());
  frm_.Height = twips.FromPixels(canvas_.height() + menuBar_.height() + FrameSize().height());
  frm_.Left = twips.FromPixels(frameGeometry().x());
  frm_.Top = twips.FromPixels(frameGeometry().y());
  frm_.State = StateOnScreen();

  StatusBar& bar = frm_.StatusBar1;
  const float height = std::max(bar.Height(), twips.FromPixels(fontMetrics().height() + 6));
  bar.Height = height;
  bar.Width = frm_.ScaleWidth();
  bar.Left = 0;
  bar.Top = bar.Align() == Align::Top ? 0 : frm_.ScaleHeight() - height;
  Panel& first = bar.Panels(1);
  first.Height = height;
  Panel& second = bar.Panels(2);
  constexpr float kBetween = 120;
  second.Left = first.Left() + first.Width() + kBetween;
  second.Width = bar.Width() - second.Left();
  second.Height = height;
}

// A desktop that gives the same size once more has refused what was asked for meanwhile, and isn't asked again.
void MainWindowView::resizeEvent(QResizeEvent* event) {
  const QScopedValueRollback<bool> guard(refused_, event->spontaneous() && size() == given_);
  if (event->spontaneous()) given_ = size();
  LayOut();
}

// The desktop may have put a frame around it.
void MainWindowView::moveEvent(QMoveEvent*) { LayOut(); }

void MainWindowView::changeEvent(QEvent* event) {
  if (event->type() == QEvent::WindowStateChange) {
    Report();
    binder_.Deliver(frm_.OnResize);
  }
  if (event->type() == QEvent::PaletteChange) ChooseIconTheme();
  QWidget::changeEvent(event);
}

void MainWindowView::closeEvent(QCloseEvent* event) {
  binder_.Deliver([this] { frm_.Unload(); });
  event->setAccepted(!frm_.Visible());
}

}  // namespace tresmor
