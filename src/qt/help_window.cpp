#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QTextBrowser>
#include <QUrl>
#include <QWindow>

#include "qt/colors.h"
#include "qt/form_parts.h"
#include "qt/form_windows.h"
#include "qt/icons.h"
#include "qt/list_widget.h"
#include "shell/frm_help.h"

namespace tresmor {
namespace {

// Twips. As wide as the pictures beside the contents.
constexpr float kWidth = 14100;
constexpr float kHeight = 10200;
constexpr float kContentsWidth = 2900;

constexpr std::uint32_t kLinkColor = 0xCC3300;  // blue

// Stays usable beside a modal window: the toolkit locks all but what belongs to that. One that came over the help
// itself can't have it.
class HelpWindow : public FormDialog {
 public:
  using FormDialog::FormDialog;
  bool event(QEvent* event) override {
    if (event->type() == QEvent::WindowBlocked) GoWith(QApplication::activeModalWidget());
    return FormDialog::event(event);
  }

 private:
  void GoWith(const QWidget* modal) {
    QWindow* const other = modal == nullptr ? nullptr : modal->windowHandle();
    if (other == nullptr || windowHandle()->isAncestorOf(other, QWindow::IncludeTransients)) return;
    windowHandle()->setTransientParent(other);
  }
};

QUrl UrlOf(const FrmHelp& form) {
  const QString folder = EditText(form.Folder()) + '/';
  QUrl url = QUrl::fromLocalFile(folder + EditText(HelpFileOf(form.Address())));
  url.setFragment(EditText(form.Address()).section('#', 1));
  return url;
}

// As the form names it.
std::string AddressOf(const QUrl& url) {
  if (!url.isLocalFile()) return url.toString().toStdString();
  const QString place = url.hasFragment() ? '#' + url.fragment() : QString();
  return (url.fileName() + place).toStdString();
}

// Links in a colour that can be read on the desktop's ground, which they are given when a page is loaded, and some air
// around tables.
class PageBrowser : public QTextBrowser {
 public:
  explicit PageBrowser(QWidget* owner) : QTextBrowser(owner) { TakeColours(); }

 protected:
  void changeEvent(QEvent* event) override {
    QTextBrowser::changeEvent(event);
    if (event->type() != QEvent::PaletteChange) return;
    TakeColours();
    reload();
  }

 private:
  void TakeColours() {
    document()->setDefaultStyleSheet("a[href] { color: " + ReadableColor(kLinkColor).name() +
                                     " } table { margin-top: 8px; margin-bottom: 8px }");
  }
};

QTextBrowser* Page(FrmHelp& form, const Binder& binder, QWidget* owner) {
  auto* const page = new PageBrowser(owner);
  page->setAccessibleName("Page");
  page->setOpenLinks(false);
  const auto show = [page, &form] {
    if (!form.Address().empty()) page->setSource(UrlOf(form));
  };
  show();
  Follow(form, *page, [show](const Notice& notice) {
    if (notice.what == Notice::What::Value) show();
  });
  QObject::connect(page, &QTextBrowser::anchorClicked, page,
                   [&](const QUrl& url) { binder.Deliver([&] { form.Follow(AddressOf(url)); }); });
  QObject::connect(page, &QTextBrowser::sourceChanged, page,
                   [&](const QUrl& url) { binder.Deliver([&] { form.Arrived(AddressOf(url)); }); });
  return page;
}

QWidget* Contents(FrmHelp& form, const Binder& binder, QWidget* owner) {
  auto* const side = new QWidget(owner);
  auto* const find = Bound<QLineEdit>(form.txtFind, binder, side);
  find->setClearButtonEnabled(true);
  auto* const list = new ListWidget(form.lstPages, binder, {}, side);
  list->setAccessibleName("Contents");
  list->header()->setVisible(false);
  list->header()->setStretchLastSection(true);
  auto* const row = new QHBoxLayout;
  row->addWidget(LabelOf("&Find:", find, side));
  row->addWidget(find, 1);
  auto* const layout = new QVBoxLayout(side);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addLayout(row);
  layout->addWidget(Bound<QLabel>(form.lblFound, binder, side));
  layout->addWidget(list, 1);
  QObject::connect(find, &QLineEdit::returnPressed, side, [&] { binder.Deliver([&] { form.OpenFirst(); }); });
  auto* const key = new QShortcut(QKeySequence("Ctrl+F"), owner);
  QObject::connect(key, &QShortcut::activated, find, [find] {
    find->setFocus(Qt::ShortcutFocusReason);
    find->selectAll();
  });
  return side;
}

template <class Go>
QPushButton* WayButton(const char* text, const char* icon, const char* key, QTextBrowser* page, QWidget* owner, Go go) {
  auto* const button = new QPushButton(ThemeIcon(icon), text, owner);
  button->setAutoDefault(false);
  QObject::connect(button, &QPushButton::clicked, page, go);
  QObject::connect(new QShortcut(QKeySequence(key), owner), &QShortcut::activated, page, go);
  return button;
}

// Where the user has been is the browser's own matter.
QHBoxLayout* Ways(FrmHelp& form, const Binder& binder, QTextBrowser* page, QWidget* owner) {
  auto* const back = WayButton("&Back", "go-previous", "Alt+Left", page, owner, &QTextBrowser::backward);
  auto* const forward = WayButton("F&orward", "go-next", "Alt+Right", page, owner, &QTextBrowser::forward);
  auto* const home = WayButton("&Home", "go-home", "Alt+Home", page, owner,
                               [&] { binder.Deliver([&] { form.Follow(HelpPages().front().file); }); });
  for (QPushButton* const button : {back, forward}) button->setEnabled(false);
  QObject::connect(page, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
  QObject::connect(page, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);
  auto* const row = new QHBoxLayout;
  for (QPushButton* const button : {back, forward, home}) row->addWidget(button);
  row->addStretch();
  return row;
}

void BringUp(QWidget& window) {
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.raise();
  window.activateWindow();
}

}  // namespace

std::unique_ptr<FormDialog> Build(FrmHelp& form, const Binder& binder) {
  const auto close = [&form] { form.Close(); };
  auto window = std::make_unique<HelpWindow>(form, binder, close, close);
  QDialog* const owner = window.get();
  owner->setWindowModality(Qt::NonModal);
  owner->setWindowFlags(Qt::Window);
  owner->setWindowIcon(ProgramIcon());
  BindCaption(form, *owner);
  auto* const parts = new QSplitter(owner);
  QWidget* const contents = Contents(form, binder, parts);
  QTextBrowser* const page = Page(form, binder, parts);
  parts->setStretchFactor(1, 1);
  const Twips& twips = binder.Scale();
  parts->setSizes({twips.ToPixels(kContentsWidth), twips.ToPixels(kWidth - kContentsWidth)});
  auto* const layout = new QVBoxLayout(owner);
  layout->addLayout(Ways(form, binder, page, owner));
  layout->addWidget(parts, 1);
  // Large letters make it wider than a small screen.
  owner->resize(
      QSize(twips.ToPixels(kWidth), twips.ToPixels(kHeight)).boundedTo(owner->screen()->availableSize() * 0.9));
  QWidget::setTabOrder(contents, page);
  Follow(form, *owner, [owner](const Notice& notice) {
    if (notice.what == Notice::What::ToFront) BringUp(*owner);
  });
  window->BeginAt(*page);
  return window;
}

}  // namespace tresmor
