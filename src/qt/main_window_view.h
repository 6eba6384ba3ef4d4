#pragma once

#include <QMenuBar>
#include <QScrollArea>
#include <string>

#include "qt/binder.h"
#include "qt/icons.h"
#include "results/list_tip.h"
#include "shell/frm_main.h"

namespace tresmor {

// The main window on the screen. It stands where FrmMain says, as far as the desktop lets it, and tells FrmMain where
// it stands and how much room is in it. It is never larger than what the screen has to give: where that is less than
// the controls need, as with a very large font, they keep the room that they need, which FrmMain is told of, and the
// window scrolls over them. Interface thread.
class MainWindowView : public QWidget {
 public:
  // All of these outlive the view.
  MainWindowView(FrmMain& frm, const Binder& binder, const ListTip& tips);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void BuildMenus();
  void AddItem(Menu& menu, MenuItem& item, QMenu& shown);
  void BuildScope();
  void BuildScopePages(QWidget& frame);
  void BuildSearch();
  void BuildResults();
  std::string TipOf(const ListView& list) const;
  void BuildFileOp();
  void BuildStatusBar();
  void BuildProgressBar(QWidget& bar);

  // The form's place was written by the program. Where the window is maximised or minimised, its place is the
  // desktop's.
  void Apply();
  // Menu bar above, room for controls below; tells the form of it.
  void LayOut();
  void Report();
  WindowState StateOnScreen() const;
  // Whole pixels, without the desktop's frame, for the outer size that the form says.
  QSize InnerSize(float width, float height) const;
  // The largest that the screen has room for.
  QSize MostSize() const;
  // The room that the controls keep in those directions in which the screen has less; 0 in others.
  QSize KeptRoom() const;
  int RoundUp(float twips) const;
  QSize FrameSize() const { return frameGeometry().size() - size(); }

  FrmMain& frm_;
  const Binder& binder_;
  const ListTip& tips_;
  QMenuBar menuBar_;
  QScrollArea scroll_;
  QWidget canvas_;  // in scroll_, which has its size while there is room
  bool reporting_ = false;
  QSize frame_;  // that was laid out last
  QSize given_;  // by the desktop, last
  bool refused_ = false;
};

}  // namespace tresmor
