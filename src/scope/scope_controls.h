// Where scope rows are put together, and their list.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "controls/button.h"
#include "controls/check_box.h"
#include "controls/choice_list.h"
#include "controls/combo_box.h"
#include "controls/frame.h"
#include "controls/list_view.h"
#include "controls/tab_strip.h"
#include "controls/text_box.h"
#include "search/scope_row.h"

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

// Positions in TabPath.
enum ScopeTab : std::int32_t { kPathTab = 1, kFileSizeTab = 2, kDateTab = 3, kScopeTab = 4 };

// Entries of cmbDate and cmbSrchArea that have a meaning of their own.
enum : std::int32_t { kAnyDate = 0, kSpecifiedDate = 5 };
enum : std::int32_t { kSearchTargetEntry = 0 };

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

// Takes all rows away and puts the fields for sizes, date and role back to what they start with. Folder, patterns and
// the tick for sub-folders stay.
void ClearScope(ScopeControls& scope);

// Brings a field's tab on show and gives it the keyboard.
void FocusField(ScopeControls& scope, ScopeTab tab, Control& field);

// These add a row as the last: a folder to search, by the row's texts, and a folder, with its separator, to keep out.
void AddIncludedRow(ListView& lstPath, const ScopeRow& row);
void AddExcludedRow(ListView& lstPath, const std::string& folder);

}  // namespace tresmor
