#include "qt/qt_screen.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include "qt/qt_dialogs.h"

namespace tresmor {

WorkArea QtScreen::GetWorkArea() const {
  const QScreen& screen = *QGuiApplication::primaryScreen();
  const QWidget* const window = ModalOwner();
  const QRect area = screen.availableGeometry();
  const auto twips = static_cast<float>(twips_.PerPixel());
  return {
      .right = area.x() + area.width(),
      .bottom = area.y() + area.height(),
      .twipsPerPixelX = twips,
      .twipsPerPixelY = twips,
      .dotsPerPixel = static_cast<float>(window == nullptr ? screen.devicePixelRatio() : window->devicePixelRatioF())};
}

}  // namespace tresmor
