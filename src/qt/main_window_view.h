#pragma once

#include <QMenuBar>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "qt/binder.h"
#include "qt/icons.h"
#include "shell/frm_main.h"

class QGridLayout;

namespace tresmor {

// What the view of the main window asks others for.
struct MainWindowActions {
  // The text for the row of a list that the pointer was moved over last.
  std::function<std::string(const ListView& list)> HoverText;
  // Folders were dropped on the scope list.
  std::function<void(const std::vector<std::string>& folders)> DropFolders;
};

// The main window on the screen. It stands where FrmMain says, as far as the desktop lets it, and tells FrmMain where
// it stands and how much room is in it. Interface thread.
class MainWindowView : public QWidget {
 public:
  // All of these outlive the view.
  MainWindowView(FrmMain& frm, const Binder& binder, MainWindowActions actions);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BuildMenus();
  void AddItem(Menu& menu, MenuItem& item, QMenu& shown);
  void BuildScope();
  void BuildScopePages(QWidget& frame);
  void BuildSearch();
  void BuildResults();
  void BuildFileOp();
  void BuildStatusBar();

  // The form's size or state was written by the program.
  void Apply();
  // Menu bar above, room for controls below; tells the form of it.
  void LayOut();
  void Report();
  QSize FrameSize() const { return frameGeometry().size() - size(); }

  FrmMain& frm_;
  const Binder& binder_;
  const MainWindowActions actions_;
  QMenuBar menuBar_;
  QWidget canvas_;
  bool reporting_ = false;
};

}  // namespace tresmor
