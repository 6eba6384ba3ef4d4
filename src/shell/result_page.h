// What the user does in the result lists, and the commands that mark their rows or show more of one.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "desk/guarded_msg.h"
#include "desk/options.h"
#include "desk/progress.h"
#include "platform/shell.h"
#include "results/list_tip.h"
#include "shell/frm_main.h"
#include "shell/show_versions.h"

namespace tresmor {

struct ResultPagePorts {
  const Shell& shell;
  ShowVersionsPorts versions;
  // Shows one of the messages that can be silenced and gives whether the user went on.
  std::function<bool(GuardedId message)> GuardedMsg;
  // Shows the picture in the file of SelectedItem.
  std::function<void()> Preview;
  // Opens the file of SelectedItem.
  std::function<void()> OpenFile;
  // Shows a file's properties in a sheet of the program's own, where the desktop has none.
  std::function<void(const std::string& file)> OwnFileProp;
  // Opens a menu at the pointer.
  std::function<void(Menu& menu)> PopUp;
};

// Interface thread. A command works on the list on show.
class ResultPage {
 public:
  // Binds the events of the result lists, but for hover texts. The page outlives them. `progress` is bound to the
  // form's own timer, panel and bar.
  ResultPage(FrmMain& frm, Progress& progress, const ResultPagePorts& ports);
  ResultPage(const ResultPage&) = delete;
  ResultPage& operator=(const ResultPage&) = delete;

  // Marks all rows, and then reminds that one file of each group had better be kept.
  void mnuMarkAll();
  void mnuMarkSelected();
  void mnuClearMarks();
  // Show the properties of SelectedItem's file, and open the folder it lies in. Without such a row nothing happens.
  void mnuPropPage();
  void mnuOpenFolder();
  // Reads the versions of all files of the list, as ShowVersions does.
  void mnuShowVer();

 private:
  void Bind(ListView& lst);
  // Has marks and selection counted soon. A count that is due already doesn't wait longer.
  void StartUpdate() { frm_.tmrUpdate.Enabled = true; }
  void Sort(ListView& lst, std::int16_t column);
  bool ShownByDesktop(const std::string& file);

  FrmMain& frm_;
  Progress& progress_;
  const ResultPagePorts ports_;
};

// Shows hover texts over the rows of the scope list and the result lists. `options` and `tip` outlive their events.
void BindListTips(FrmMain& frm, const Options& options, ListTip& tip);

}  // namespace tresmor
