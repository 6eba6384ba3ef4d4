#pragma once

#include <QObject>
#include <functional>
#include <string>
#include <vector>

#include "qt/binder.h"

class QDropEvent;

namespace tresmor {

// Takes files and folders that are dropped anywhere on a part of a window, also on its fields, which would take them
// for text. They are copied or linked, never moved, as whoever they come from would delete what was. Interface thread.
class PathDrops : public QObject {
 public:
  using Handler = std::function<void(const std::vector<std::string>& paths)>;

  // For all that stands in `area` by now. `handler` is called with the exact bytes, as what the user does, once the
  // drop has ended; not after `area` has gone, whose child this is.
  PathDrops(QWidget& area, const Binder& binder, Handler handler);

  bool eventFilter(QObject* target, QEvent* event) override;

 private:
  void Take(std::vector<std::string> paths);

  const Binder& binder_;
  const Handler handler_;
};

}  // namespace tresmor
