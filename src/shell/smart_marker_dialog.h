// What the dialog "Smart Marking" does around the rules of Smart Marker.
#pragma once

#include <cstdint>
#include <functional>

#include "desk/action_dispatch.h"
#include "desk/options.h"
#include "desk/presets.h"
#include "desk/progress.h"
#include "marker/col_folders.h"
#include "marker/smart_marker.h"
#include "results/list_tip.h"
#include "shell/frm_main.h"
#include "shell/shell_forms.h"

namespace tresmor {

// What of the program it reads.
struct SmartMarkerOwner {
  FrmMain& frm;
  Progress& progress;  // bound to the form's own timer, panel and bar
  const Options& options;
  const Presets& presets;
  HoveredRow& hovered;
};

struct SmartMarkerDialogPorts {
  SmartMarkerPorts rules;
  SettingsStore& settings;
  ShellForms& forms;
  PathStyle style;
  std::function<void()> Help;  // shows the help's page about marks
};

// Interface thread.
class SmartMarkerDialog {
 public:
  SmartMarkerDialog(const SmartMarkerOwner& owner, const SmartMarkerDialogPorts& ports)
      : owner_(owner), ports_(ports) {}

  // Fills a form from the list on show, shows it and returns when it is closed. Events are let in while it fills, and
  // the main window shows the progress. An action of the main window.
  void Show();

 private:
  void Load(FrmSmartDel& frm, ResultList asked) const;
  ColFolders FoldersOf(const ListView& lst) const;
  void FillFolders(ListView& lstFolder, const ColFolders& colFolders) const;
  void Bind(FrmSmartDel& frm, ActionDispatch& inDialog) const;

  const SmartMarkerOwner owner_;
  const SmartMarkerDialogPorts ports_;
};

// Selects all folders, or none, told by one notice, and gives them the keys. Fails with Overflow past row 32767, where
// the rows before it stay as it made them.
void SelAllFolders(FrmSmartDel& frm, bool bSel);

}  // namespace tresmor
