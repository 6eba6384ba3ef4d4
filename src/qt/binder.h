// Ties widgets to controls: a widget shows what its control holds and hands over what the user does. It keeps nothing
// of its own and decides nothing.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <utility>

#include "controls/button.h"
#include "controls/check_box.h"
#include "controls/check_list.h"
#include "controls/choice_list.h"
#include "controls/combo_box.h"
#include "controls/frame.h"
#include "controls/image.h"
#include "controls/label.h"
#include "controls/menu.h"
#include "controls/mouse_pointer.h"
#include "controls/option_button.h"
#include "controls/panel.h"
#include "controls/progress_bar.h"
#include "controls/text_box.h"
#include "qt/qt_event_queue.h"
#include "qt/twips.h"

class QAction;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QProgressBar;
class QPushButton;
class QCheckBox;
class QRadioButton;

namespace tresmor {

// Calls `show(notice)` after each change of `control` for as long as `widget` lives.
template <class Show>
void Follow(Control& control, QWidget& widget, Show show) {
  control.Listen([alive = QPointer<QWidget>(&widget), show = std::move(show)](const Notice& notice) {
    if (alive && notice.when == Notice::When::After) show(notice);
  });
}

// Interface thread. A widget may go before its control; no event of it comes after that.
class Binder {
 public:
  Binder(QtEventQueue& events, const Twips& twips) : events_(events), twips_(twips) {}

  void Bind(Button& control, QPushButton& widget) const;
  void Bind(CheckBox& control, QCheckBox& widget) const;
  void Bind(OptionButton& control, QRadioButton& widget) const;
  void Bind(Label& control, QLabel& widget) const;
  void Bind(Panel& control, QLabel& widget) const;
  void Bind(Frame& control, QGroupBox& widget) const;
  void Bind(TextBox& control, QLineEdit& widget) const;
  void Bind(ComboBox& control, QComboBox& widget) const;
  void Bind(ChoiceList& control, QComboBox& widget) const;
  void Bind(CheckList& control, QListWidget& widget) const;
  void Bind(ProgressBar& control, QProgressBar& widget) const;
  void Bind(MousePointer& control, QWidget& window) const;

  // What all controls have: enabled, visible, focus, hover text, and the topic of the help.
  void BindState(Control& control, QWidget& widget) const;
  // Puts the widget where its control stands, now and whenever that changes.
  void BindPlace(PlacedControl& control, QWidget& widget) const;

  // F1 in the window of `form` asks OnHelp for the topic of the control that has the keys, or of what that stands in.
  void BindHelp(Control& form, QWidget& window) const;
  // The same in a window without a form, such as a box: for what it stands over.
  void BindHelp(QWidget& window) const;
  // The same in an open menu, which closes: for the item that is highlighted, the menu, or what it stands in.
  void BindHelp(Menu& menu, QMenu& shown) const;
  // Which item that is.
  void BindItem(Control& item, QAction& action) const;
  std::function<void(std::int32_t context)> OnHelp;  // 0 where nothing has a topic

  // Runs what the user set off; nothing of it gets into the toolkit.
  void Deliver(const std::function<void()>& handler) const {
    if (handler) events_.Deliver(handler);
  }

  const Twips& Scale() const { return twips_; }

 private:
  void AskHelp(std::int32_t topic) const;
  // The same in the opened list of a drop-down, which closes.
  void BindListHelp(QComboBox& widget) const;

  QtEventQueue& events_;
  const Twips twips_;
};

// Where a placed control stands.
inline Place PlaceOf(const PlacedControl& control) {
  return {control.Left(), control.Top(), control.Width(), control.Height()};
}

// A caption for a widget that takes "&" for a mnemonic, as the program's captions do.
QString Caption(const std::string& caption);

}  // namespace tresmor
