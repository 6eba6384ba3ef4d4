// Drags of other programs, as the desktop brings them to a widget.
#pragma once

#include <QDropEvent>
#include <QMimeData>

#include "qt/qt_test.h"

namespace tresmor::tests {

struct Drag {
  const QMimeData& data;
  Qt::DropActions offered = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;
  Qt::KeyboardModifiers keys{};  // by which the source proposes an action
};

// Over `place` of `window`, where a child or an area around it may take it. Gives what the source is told to do.
inline Qt::DropAction Drop(QWidget& window, const QPoint& place, const Drag& drag) {
  QWidget* const child = window.childAt(place);
  QWidget* const target = child == nullptr ? &window : child;
  const QPoint point = target->mapFrom(&window, place);
  QDragEnterEvent enter(point, drag.offered, &drag.data, Qt::LeftButton, drag.keys);
  QCoreApplication::sendEvent(target, &enter);
  if (!enter.isAccepted()) return Qt::IgnoreAction;
  QDragMoveEvent move(point, drag.offered, &drag.data, Qt::LeftButton, drag.keys);
  QCoreApplication::sendEvent(target, &move);
  if (!move.isAccepted()) return Qt::IgnoreAction;
  EXPECT_EQ(move.dropAction(), enter.dropAction());
  QDropEvent drop(point, drag.offered, &drag.data, Qt::LeftButton, drag.keys);
  drop.setDropAction(move.dropAction());
  QCoreApplication::sendEvent(target, &drop);
  return drop.isAccepted() ? drop.dropAction() : Qt::IgnoreAction;
}

inline QPoint CenterOf(const QWidget& widget, const QWidget& window) {
  return widget.mapTo(&window, widget.rect().center());
}

}  // namespace tresmor::tests
