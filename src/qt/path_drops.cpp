#include "qt/path_drops.h"

#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QUrl>
#include <utility>

namespace tresmor {
namespace {

// Files and folders that the desktop names by local addresses.
std::vector<std::string> LocalPaths(const QMimeData& data) {
  std::vector<std::string> paths;
  for (const QUrl& url : data.urls()) {
    if (url.isLocalFile())
      paths.push_back(QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toUtf8()).toStdString());
  }
  return paths;
}

// Whatever the source proposes, which depends on the keys that are held.
void AcceptUnmoved(QDropEvent& event) {
  for (const Qt::DropAction action : {Qt::CopyAction, Qt::LinkAction}) {
    if (!event.possibleActions().testFlag(action)) continue;
    event.setDropAction(action);
    return event.accept();
  }
  event.setDropAction(Qt::IgnoreAction);
  event.ignore();
}

}  // namespace

PathDrops::PathDrops(QWidget& area, const Binder& binder, Handler handler)
    : QObject(&area), binder_(binder), handler_(std::move(handler)) {
  area.setAcceptDrops(true);
  area.installEventFilter(this);
  for (QLineEdit* const field : area.findChildren<QLineEdit*>()) field->installEventFilter(this);
}

bool PathDrops::eventFilter(QObject*, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) return false;
  auto& drop = static_cast<QDropEvent&>(*event);
  std::vector<std::string> paths = LocalPaths(*drop.mimeData());
  if (paths.empty()) return false;
  AcceptUnmoved(drop);
  if (type == QEvent::Drop && drop.isAccepted()) Take(std::move(paths));
  return true;
}

// The source waits for the end of the drop, and what is done with the paths may show boxes.
void PathDrops::Take(std::vector<std::string> paths) {
  QMetaObject::invokeMethod(
      this, [this, paths = std::move(paths)] { binder_.Deliver([&] { handler_(paths); }); }, Qt::QueuedConnection);
}

}  // namespace tresmor
