// A window to put widgets in that are tied to a test's controls. It goes before them, so it is made after them.
#pragma once

#include <QVBoxLayout>

#include "qt/binder.h"
#include "qt/qt_test.h"

namespace tresmor::tests {

inline constexpr double kDesignTwips = 15;

struct Stage {
  Stage() {
    events.OnUncaught = [](const std::exception_ptr&) { ADD_FAILURE() << "a handler failed"; };
    room = new QVBoxLayout(&window);
  }

  template <class Widget, class Control>
  Widget* Add(Control& control) {
    auto* const widget = new Widget(&window);
    binder.Bind(control, *widget);
    room->addWidget(widget);
    return widget;
  }
  void Show() { ShowActive(window); }

  QtEventQueue events;
  const Twips twips{kDesignTwips};
  const Binder binder{events, twips};
  QWidget window;
  QVBoxLayout* room = nullptr;
};

}  // namespace tresmor::tests
