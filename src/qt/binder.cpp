#include "qt/binder.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <utility>

#include "qt/display_text.h"

namespace tresmor {
namespace {

// Hands over that the focus came to a field from another widget of its window, or went to one. It also comes and goes
// with whole windows and menus, which is nothing that a field's user did.
class FocusWatch : public QObject {
 public:
  FocusWatch(QLineEdit& field, QEvent::Type type, std::function<void()> handler)
      : QObject(&field), type_(type), handler_(std::move(handler)) {
    field.installEventFilter(this);
  }
  bool eventFilter(QObject* field, QEvent* event) override {
    if (event->type() != type_ || !IsOfTheUser(static_cast<QFocusEvent*>(event)->reason())) return false;
    // One that is being destroyed loses the focus when it is a field no more.
    if (qobject_cast<QLineEdit*>(field) != nullptr) handler_();
    return false;
  }

 private:
  static bool IsOfTheUser(Qt::FocusReason reason) {
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason;
  }

  const QEvent::Type type_;
  const std::function<void()> handler_;
};

void WatchFocus(QLineEdit& field, QEvent::Type type, std::function<void()> handler) {
  new FocusWatch(field, type, std::move(handler));  // the field's child
}

// Selects all of a field when the program asks for it. Where a click of the mouse brought the focus that it asks upon,
// the rest of the click would take the selection away again: it is made up for when the button is let go, unless the
// mouse selected something else.
class WholeSelection : public QObject {
 public:
  explicit WholeSelection(QLineEdit& field) : QObject(&field), field_(field) { field.installEventFilter(this); }
  void Select() {
    field_.selectAll();
    again_ = byMouse_;
  }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::FocusIn) {
      byMouse_ = static_cast<QFocusEvent*>(event)->reason() == Qt::MouseFocusReason;
    } else if (event->type() == QEvent::MouseButtonRelease) {
      byMouse_ = false;
      if (std::exchange(again_, false) && !field_.hasSelectedText()) field_.selectAll();
    }
    return false;
  }

 private:
  QLineEdit& field_;
  bool byMouse_ = false;  // the click that brought the focus isn't over
  bool again_ = false;
};

// Cut and paste stay a field's own where it takes no typing too, and do nothing there.
class LockedKeys : public QObject {
 public:
  explicit LockedKeys(QLineEdit& field) : QObject(&field) { field.installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::ShortcutOverride) return false;
    const auto& keys = *static_cast<QKeyEvent*>(event);
    if (!keys.matches(QKeySequence::Cut) && !keys.matches(QKeySequence::Paste)) return false;
    event->accept();
    return true;
  }
};

// Enter clicks the button that has the keys, also where another one is the default of its window.
class EnterClicks : public QObject {
 public:
  explicit EnterClicks(QPushButton& button) : QObject(&button), button_(button) { button.installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::KeyPress) return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
    button_.click();
    return true;
  }

 private:
  QPushButton& button_;
};

// Shows one value, now and after each change of that kind.
template <class Show>
void ShowValue(Control& control, QWidget& widget, Notice::What what, Show show) {
  show();
  Follow(control, widget, [what, show](const Notice& notice) {
    if (notice.what == what) show();
  });
}

// A ground of the desktop's own colours, or the style's.
void ShowGround(QWidget& widget, std::uint32_t color) {
  QPalette palette;
  if (color != kWindowGround) {
    palette.setColor(QPalette::Base, palette.color(QPalette::Highlight));
    palette.setColor(QPalette::Button, palette.color(QPalette::Highlight));
  }
  widget.setPalette(palette);
}

void ShowEntries(const ComboBox& control, QComboBox& widget) {
  widget.clear();
  for (std::int32_t i = 0; i < control.ListCount(); ++i) widget.addItem(EditText(control.List(i)));
}

void BindToolTip(Control& control, QWidget& widget) {
  ShowValue(control, widget, Notice::What::ToolTip, [&] { widget.setToolTip(PlainToolTip(control.ToolTipText())); });
  widget.setToolTipDuration(kToolTipMilliseconds);
}

Qt::CheckState TickOf(bool ticked) { return ticked ? Qt::Checked : Qt::Unchecked; }

// Which control a widget or an item of a menu shows.
constexpr char kControl[] = "control";
void SetControl(Control& control, QObject& shown) {
  shown.setProperty(kControl, QVariant::fromValue(static_cast<void*>(&control)));
}
const Control* ControlOf(const QObject& shown) {
  return static_cast<const Control*>(shown.property(kControl).value<void*>());
}

// The topic of what a widget shows, or of the nearest around it that has one; 0 for none.
std::int32_t HelpTopicAt(const QWidget* widget) {
  for (; widget != nullptr; widget = widget->parentWidget()) {
    const Control* const control = ControlOf(*widget);
    if (control != nullptr && control->HelpContextID != 0) return control->HelpContextID;
  }
  return 0;
}

// The same for the highlighted item of a menu.
std::int32_t HelpTopicOf(const QMenu& menu) {
  const QAction* const action = menu.activeAction();
  const Control* const item = action == nullptr ? nullptr : ControlOf(*action);
  return item != nullptr && item->HelpContextID != 0 ? item->HelpContextID : HelpTopicAt(&menu);
}

// Menus and opened lists take all keys for themselves.
class PopupHelp : public QObject {
 public:
  PopupHelp(QWidget& popup, std::function<void()> ask) : QObject(&popup), ask_(std::move(ask)) {
    popup.installEventFilter(this);
  }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1) return false;
    ask_();
    return true;
  }

 private:
  const std::function<void()> ask_;
};

}  // namespace

QString Caption(const std::string& caption) { return ShownLine(caption); }

void Binder::BindState(Control& control, QWidget& widget) const {
  ShowValue(control, widget, Notice::What::Enabled, [&] { widget.setEnabled(control.Enabled()); });
  ShowValue(control, widget, Notice::What::Visible, [&] { widget.setVisible(control.Visible()); });
  BindToolTip(control, widget);
  SetControl(control, widget);
  Follow(control, widget, [&](const Notice& notice) {
    if (notice.what == Notice::What::Focus) widget.setFocus(Qt::OtherFocusReason);
  });
}

void Binder::BindPlace(PlacedControl& control, QWidget& widget) const {
  ShowValue(control, widget, Notice::What::Place, [&, this] { widget.setGeometry(twips_.ToPixels(PlaceOf(control))); });
  Follow(control, widget, [&](const Notice& notice) {
    if (notice.what == Notice::What::ToFront) widget.raise();
  });
}

void Binder::BindHelp(Control& form, QWidget& window) const {
  SetControl(form, window);
  BindHelp(window);
}

void Binder::BindHelp(QWidget& window) const {
  auto* const key = new QShortcut(QKeySequence(Qt::Key_F1), &window);
  QObject::connect(key, &QShortcut::activated, &window, [this, &window] {
    const QWidget* const focus = window.focusWidget();
    AskHelp(HelpTopicAt(focus == nullptr ? &window : focus));
  });
}

void Binder::BindHelp(Menu& menu, QMenu& shown) const {
  SetControl(menu, shown);
  new PopupHelp(shown, [this, &shown] {  // the menu's child
    const std::int32_t topic = HelpTopicOf(shown);
    shown.close();
    AskHelp(topic);
  });
}

void Binder::BindListHelp(QComboBox& widget) const {
  new PopupHelp(*widget.view(), [this, &widget] {  // the list's child
    widget.hidePopup();
    AskHelp(HelpTopicAt(&widget));
  });
}

void Binder::BindItem(Control& item, QAction& action) const { SetControl(item, action); }

void Binder::AskHelp(std::int32_t topic) const {
  if (OnHelp) Deliver([&] { OnHelp(topic); });
}

void Binder::Bind(Button& control, QPushButton& widget) const {
  BindState(control, widget);
  ShowValue(control, widget, Notice::What::Text, [&] { widget.setText(Caption(control.Caption())); });
  widget.setAutoDefault(false);
  new EnterClicks(widget);  // the widget's child
  QObject::connect(&widget, &QPushButton::clicked, &widget, [&, this] { Deliver(control.OnClick); });
}

void Binder::Bind(CheckBox& control, QCheckBox& widget) const {
  BindState(control, widget);
  ShowValue(control, widget, Notice::What::Text, [&] { widget.setText(Caption(control.Caption())); });
  ShowValue(control, widget, Notice::What::Value, [&] {
    widget.setCheckState(control.Value() == kGrayed ? Qt::PartiallyChecked : TickOf(control.Ticked()));
  });
  QObject::connect(&widget, &QCheckBox::clicked, &widget, [&, this] {
    widget.setTristate(false);
    Deliver([&] { control.Value = widget.isChecked() ? kTicked : kOff; });
    Deliver(control.OnClick);
  });
}

void Binder::Bind(OptionButton& control, QRadioButton& widget) const {
  BindState(control, widget);
  ShowValue(control, widget, Notice::What::Text, [&] { widget.setText(Caption(control.Caption())); });
  ShowValue(control, widget, Notice::What::Value, [&] { widget.setChecked(control.Value()); });
  QObject::connect(&widget, &QRadioButton::clicked, &widget, [&, this] {
    Deliver([&] { control.Value = true; });
    widget.setChecked(control.Value());  // one that stands apart from the others goes out at a second click
  });
}

void Binder::Bind(Label& control, QLabel& widget) const {
  BindState(control, widget);
  widget.setTextFormat(Qt::PlainText);
  widget.setWordWrap(true);
  ShowValue(control, widget, Notice::What::Text, [&] { widget.setText(ShownCaption(control.Caption())); });
}

void Binder::Bind(Panel& control, QLabel& widget) const {
  widget.setTextFormat(Qt::PlainText);
  ShowValue(control, widget, Notice::What::Text, [&] { widget.setText(ShownLine(control.Text())); });
  BindToolTip(control, widget);
}

void Binder::Bind(Frame& control, QGroupBox& widget) const {
  BindState(control, widget);
  ShowValue(control, widget, Notice::What::Text, [&] { widget.setTitle(Caption(control.Caption())); });
}

void Binder::Bind(TextBox& control, QLineEdit& widget) const {
  BindState(control, widget);
  widget.setReadOnly(control.Locked);
  if (control.Locked) new LockedKeys(widget);  // the field's child
  if (control.MaxLength > 0) widget.setMaxLength(control.MaxLength);
  ShowValue(control, widget, Notice::What::Text, [&] {
    if (EditedBytes(widget.text()) != control.Text()) widget.setText(EditText(control.Text()));
  });
  QObject::connect(&widget, &QLineEdit::textEdited, &widget,
                   [&, this](const QString& text) { Deliver([&] { control.Text = EditedBytes(text); }); });
  WatchFocus(widget, QEvent::FocusIn, [&, this] { Deliver(control.OnGotFocus); });
  WatchFocus(widget, QEvent::FocusOut, [&, this] { Deliver(control.OnLostFocus); });
  auto* const selection = new WholeSelection(widget);  // the field's child; hears of the focus first, as the last made
  Follow(control, widget, [selection](const Notice& notice) {
    if (notice.what == Notice::What::Selection) selection->Select();
  });
}

void Binder::Bind(ComboBox& control, QComboBox& widget) const {
  BindState(control, widget);
  BindListHelp(widget);
  widget.setEditable(true);
  widget.setInsertPolicy(QComboBox::NoInsert);
  widget.setCompleter(nullptr);
  // Else the toolkit takes a typed text that equals an entry for a click on it.
  QObject::disconnect(widget.lineEdit(), SIGNAL(editingFinished()), &widget, nullptr);
  widget.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  const auto show = [&] {
    const QSignalBlocker quiet(widget);
    ShowEntries(control, widget);
    widget.setCurrentIndex(control.ListIndex());
    widget.setEditText(EditText(control.Text()));
  };
  show();
  Follow(control, widget, [&, show](const Notice& notice) {
    switch (notice.what) {
      case Notice::What::Text:
        // What was typed stands there already, and the cursor in it.
        if (EditedBytes(widget.currentText()) != control.Text()) widget.setEditText(EditText(control.Text()));
        break;
      case Notice::What::ListIndex:
        if (control.ListIndex() >= 0) widget.setCurrentIndex(control.ListIndex());
        break;
      case Notice::What::BackColor:
        ShowGround(widget, control.BackColor());
        break;
      case Notice::What::RowsAdded:
      case Notice::What::RowsRemoved:
      case Notice::What::Item:
        show();
        break;
      default:
        break;
    }
  });
  QObject::connect(widget.lineEdit(), &QLineEdit::textEdited, &widget,
                   [&, this](const QString& text) { Deliver([&] { control.SetText(EditedBytes(text)); }); });
  QObject::connect(&widget, &QComboBox::activated, &widget,
                   [&, this](int index) { Deliver([&] { control.SetListIndex(index); }); });
}

void Binder::Bind(ChoiceList& control, QComboBox& widget) const {
  BindState(control, widget);
  BindListHelp(widget);
  for (std::int32_t i = 0; i < control.ListCount(); ++i) widget.addItem(ShownLine(control.List(i)));
  ShowValue(control, widget, Notice::What::Value, [&] { widget.setCurrentIndex(control.ListIndex()); });
  ShowValue(control, widget, Notice::What::BackColor, [&] { ShowGround(widget, control.BackColor()); });
  QObject::connect(&widget, &QComboBox::activated, &widget,
                   [&, this](int index) { Deliver([&] { control.Choose(index); }); });
}

void Binder::Bind(CheckList& control, QListWidget& widget) const {
  BindState(control, widget);
  for (std::int32_t i = 0; i < control.Count(); ++i) {
    auto* const item = new QListWidgetItem(ShownLine(control.Text(i)), &widget);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setCheckState(TickOf(control.Ticked(i)));
  }
  widget.setCurrentRow(0);
  Follow(control, widget, [&](const Notice& notice) {
    if (notice.what == Notice::What::BackColor) ShowGround(widget, control.BackColor());
    if (notice.what == Notice::What::Item)
      widget.item(notice.first)->setCheckState(TickOf(control.Ticked(notice.first)));
  });
  QObject::connect(&widget, &QListWidget::itemChanged, &widget, [&, this](QListWidgetItem* item) {
    Deliver([&] { control.SetTicked(widget.row(item), item->checkState() == Qt::Checked); });
  });
}

void Binder::Bind(ProgressBar& control, QProgressBar& widget) const {
  BindState(control, widget);
  widget.setRange(0, 100);
  widget.setTextVisible(false);
  ShowValue(control, widget, Notice::What::Value, [&] { widget.setValue(static_cast<int>(control.Value())); });
}

void Binder::Bind(MousePointer& control, QWidget& window) const {
  ShowValue(control, window, Notice::What::Value, [&] {
    switch (control.Shape()) {
      case PointerShape::Default:
        return window.unsetCursor();
      case PointerShape::Hourglass:
        return window.setCursor(Qt::WaitCursor);
      case PointerShape::HourglassAndArrow:
        return window.setCursor(Qt::BusyCursor);
    }
  });
}

}  // namespace tresmor
