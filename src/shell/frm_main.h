// The main window as data: the controls that the program's logic reads and writes, with the values they start with.
#pragma once

#include <array>
#include <cstdint>
#include <functional>

#include "controls/button.h"
#include "controls/check_box.h"
#include "controls/check_list.h"
#include "controls/frame.h"
#include "controls/list_view.h"
#include "controls/mouse_pointer.h"
#include "controls/progress_bar.h"
#include "controls/status_bar.h"
#include "controls/tab_strip.h"
#include "controls/timer.h"
#include "controls/window.h"
#include "persist/session_file.h"
#include "platform/screen.h"
#include "results/preview.h"
#include "results/result_lists.h"
#include "scope/scope_controls.h"
#include "shell/main_menu.h"

namespace tresmor {

// What the button that starts a search says at rest, and while one runs: the program's own sign of a running search.
inline constexpr char kSearchCaption[] = "&Search";
inline constexpr char kCancelCaption[] = "&Cancel";

// What the panel says while nothing is going on.
inline constexpr char kReadyText[] = "Tresmor is ready.";

// What a search is to look for, and the button that starts and cancels it.
struct SearchControls {
  SearchControls();

  Frame fraSrch{"", {6960, 0, 2775, 3255}};
  Frame fraSrchOpt{"2. Search Options", {0, 0, 2655, 2600}};
  CheckList lstSrchType{{"Zero Size", "Duplicates", "Same File Name", "Portions"}};
  CheckBox chkTolerant{false, "Tolerate small differences"};
  CheckBox chkHidden{false, "Search hidden files"};
  CheckBox chkProtectWinDir{true, "Protect system folders"};
  CheckBox chkVer{false, "Show File Version"};  // read the versions of the files that are listed
  Button cmdSrch{kSearchCaption, {0, 2700, 1275, 375}};
  Button cmdNewSrch{"&New Search", {1380, 2700, 1275, 375}};
};

struct FrmMain : Window, MainMenu, ScopeControls, SearchControls {
  FrmMain();

  Frame frmFileOp{"", {6960, 3360, 2175, 3975}};
  Button cmdTask{"&Task"};
  PreviewPane preview;
  StatusBar StatusBar1{{0, 7272, 10140, 252}, 2400};
  Panel& msgBar{StatusBar1.Panels(2)};
  ProgressBar pbMain;
  const Control* PrevPbParent = nullptr;  // of pbMain, once it sits in the status bar
  const Screen* screen = nullptr;         // that the window shows on; none for a form without a window
  ResultLists results{msgBar};
  std::array<Frame, kResultLists> frmResult;  // one a tab, around its list
  Timer tmrProgress{1000};
  Timer tmrUpdate{1000};  // counts marks and selection once, when the clicks have ended
  MousePointer pointer;
  SessionState session;
};

// Puts the window back into the state before a first search: no scope, no findings, no room for any, the usual search
// types and criteria, no session. The options stay as they are.
void Init(FrmMain& frm);
// Takes the commands on sessions and files out of reach while the lists change.
void DisableFileMenus(FrmMain& frm);
// Makes room for lists that were filled anew, puts them in order and gives the commands back.
void ShowResult(
    FrmMain& frm, const std::function<void()>& inBetween = [] {});

}  // namespace tresmor
