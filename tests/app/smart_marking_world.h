// What takes a test through the dialog Smart Marking.
#pragma once

#include <utility>

#include "app/dialog_world.h"

namespace tresmor::tests {

class SmartMarkingWorld : public DialogTest {
 protected:
  void ByKey(ModalScript::Answer answer) {
    InDialog("Smart Marking", Qt::Key_K, Qt::ControlModifier, std::move(answer));
  }
  void ByMouse(ModalScript::Answer answer) {
    ByMenu("Result Files", "Smart Marker...", "Smart Marking", std::move(answer));
  }
  static void MoreByMouse(const QWidget& window) {
    auto* const tabs = window.findChild<QTabBar*>();
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
  }
  static void MoreByKey(QWidget& window) { Press(window, Qt::Key_M, Qt::AltModifier); }

  static QTreeView* Folders(const QWidget& window) { return static_cast<QTreeView*>(ByName(window, "By Folder")); }
  static QComboBox* Choice(const QWidget& window, const QString& name) {
    return static_cast<QComboBox*>(ByName(window, name));
  }
};

}  // namespace tresmor::tests
