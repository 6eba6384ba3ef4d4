// The main window as data: the controls that the program's logic reads and writes, with the values they start with.
#pragma once

#include <array>
#include <cstdint>

#include "controls/button.h"
#include "controls/check_box.h"
#include "controls/check_list.h"
#include "controls/choice_list.h"
#include "controls/combo_box.h"
#include "controls/frame.h"
#include "controls/list_view.h"
#include "controls/mouse_pointer.h"
#include "controls/progress_bar.h"
#include "controls/status_bar.h"
#include "controls/tab_strip.h"
#include "controls/text_box.h"
#include "controls/timer.h"
#include "controls/window.h"
#include "persist/session_file.h"
#include "results/preview.h"
#include "results/result_lists.h"
#include "shell/main_menu.h"

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

// What the button that starts a search says at rest, and while one runs: the program's own sign of a running search.
inline constexpr char kSearchCaption[] = "&Search";
inline constexpr char kCancelCaption[] = "&Cancel";

// What the panel says while nothing is going on.
inline constexpr char kReadyText[] = "Tresmor is ready.";

// The fields and boxes in which a scope row is put together, the list of such rows, and the buttons between.
struct ScopeControls {
  ScopeControls();

  Frame frmSelPath{"1. Select Paths", {120, 0, 6615, 3135}};
  TabStrip TabPath{{"Path", "File Size", "Date", "Scope"}, {120, 240, 6615, 1215}};
  std::int16_t CurPathTab = 0;   // the index of the frame on show
  std::array<Frame, 4> frmPath;  // one a tab
  ComboBox txtPath;              // first frame, as are the next four
  Button cmdBrowseFolder{"&Browse..."};
  CheckBox chkSubDir{true, "S&ub-Folder"};
  ComboBox txtExt{"*.*"};
  CheckBox chkExclude{false, "E&xclude"};
  TextBox txtMinSz;  // kilobytes; second frame
  TextBox txtMaxSz;
  // Third frame.
  ChoiceList cmbDate{{"Any", "Since last day", "Since last week", "Since last month", "Since last year", "Specified"}};
  TextBox txtDate;
  ChoiceList cmbSrchArea{{"Search Target", "Search Area"}};  // fourth frame
  ListView lstPath{{1200, 1560, 5295, 1455}};                // the scope rows
  Button cmdAdd{"Add&>", {120, 1560, 975, 375}};
  Button cmdRemove{"&<Remove", {120, 2040, 975, 375}};
};

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
  ResultLists results{msgBar};
  std::array<Frame, kResultLists> frmResult;  // one a tab, around its list
  Timer tmrProgress{1000};
  Timer tmrUpdate{1000};  // counts marks and selection once, when the clicks have ended
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
