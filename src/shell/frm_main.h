// The main window as data: the controls that the program's logic reads and writes, with the values they start with.
#pragma once

#include <cstdint>

#include "controls/check_box.h"
#include "controls/check_list.h"
#include "controls/list_view.h"
#include "controls/menu.h"
#include "controls/mouse_pointer.h"
#include "controls/panel.h"
#include "controls/progress_bar.h"
#include "controls/timer.h"
#include "persist/session_file.h"
#include "results/result_lists.h"

namespace tresmor {

// Sub-items of a row of lstPath. The icon tells a folder to search from one to keep out (ScopeRow); a row of the second
// kind has no cells behind the sub-folder one.
enum : std::int16_t {
  kScopeTextItem = 0,  // the folder, directly followed by its patterns
  kSubFolderItem = 1,
  kMinSizeItem = 2,
  kMaxSizeItem = 3,
  kSinceItem = 4,
  kSearchTargetItem = 5,
};

// What the panel says while nothing is going on.
inline constexpr char kReadyText[] = "Tresmor is ready.";

struct FrmMain {
  FrmMain();

  ListView lstPath;  // the scope rows
  CheckList lstSrchType{{"Zero Size", "Duplicates", "Same File Name", "Portions"}};
  CheckBox chkTolerant;
  CheckBox chkHidden;
  CheckBox chkProtectWinDir{true};
  CheckBox chkVer{false, "Show File Version"};  // read the versions of the files that are listed
  Timer tmrProgress{1000};
  Timer tmrUpdate{1000};  // counts marks and selection once, when the clicks have ended
  Panel msgBar;
  ProgressBar pbMain;
  ResultLists results{msgBar};
  Menu mnuSrchSession;
  Menu mnuFile;
  MousePointer pointer;
  SessionState session;
};

// Puts the window back into the state before a first search: no scope, no findings, the usual search types, no session.
// The options stay as they are.
void Init(FrmMain& frm);
// Takes the commands on sessions and files out of reach while the lists change.
void DisableFileMenus(FrmMain& frm);
// Puts lists that were filled anew in order and gives the commands back.
void ShowResult(FrmMain& frm);

}  // namespace tresmor
