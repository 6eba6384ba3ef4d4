// What the user does in the result lists, and the commands that mark their rows or show more of one.
#pragma once

#include <cstdint>
#include <functional>

#include "desk/guarded_msg.h"
#include "desk/options.h"
#include "platform/shell.h"
#include "results/list_tip.h"
#include "shell/frm_main.h"

namespace tresmor {

struct ResultPagePorts {
  const Shell& shell;
  // Shows one of the messages that can be silenced and gives whether the user went on.
  std::function<bool(GuardedId message)> GuardedMsg;
  // Shows the picture in the file of SelectedItem.
  std::function<void()> Preview;
  // Opens the file of SelectedItem.
  std::function<void()> OpenFile;
  // Opens a menu at the pointer.
  std::function<void(Menu& menu)> PopUp;
};

// Interface thread. A command works on the list on show.
class ResultPage {
 public:
  // Binds the events of the result lists, but for hover texts. The page outlives them.
  ResultPage(FrmMain& frm, const ResultPagePorts& ports);
  ResultPage(const ResultPage&) = delete;
  ResultPage& operator=(const ResultPage&) = delete;

  // Marks all rows, and then reminds that one file of each group had better be kept.
  void mnuMarkAll();
  void mnuMarkSelected();
  void mnuClearMarks();
  // Show the properties of SelectedItem's file, and open the folder it lies in. Without such a row nothing happens.
  void mnuPropPage();
  void mnuOpenFolder();

 private:
  void Bind(ListView& lst);
  // Has marks and selection counted soon. A count that is due already doesn't wait longer.
  void StartUpdate() { frm_.tmrUpdate.Enabled = true; }
  void Sort(ListView& lst, std::int16_t column);

  FrmMain& frm_;
  const ResultPagePorts ports_;
};

// Shows hover texts over the rows of the scope list and the result lists. `options` and `tip` outlive their events.
void BindListTips(FrmMain& frm, const Options& options, ListTip& tip);

}  // namespace tresmor
