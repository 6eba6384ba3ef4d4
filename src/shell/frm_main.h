// The main window as data: the controls that the program's logic reads and writes, with the values they start with.
#pragma once

#include <cstdint>

#include "controls/check_box.h"
#include "controls/check_list.h"
#include "controls/list_view.h"
#include "controls/panel.h"
#include "controls/progress_bar.h"
#include "controls/timer.h"
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

struct FrmMain {
  FrmMain();

  ListView lstPath;  // the scope rows
  CheckList lstSrchType{{"Zero Size", "Duplicates", "Same File Name", "Portions"}};
  CheckBox chkTolerant;
  CheckBox chkHidden;
  CheckBox chkProtectWinDir{true};
  CheckBox chkVer;  // read the versions of the files that are listed
  Timer tmrProgress{1000};
  Panel msgBar;
  ProgressBar pbMain;
  ResultLists results{msgBar};
};

}  // namespace tresmor
