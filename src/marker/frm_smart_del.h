// The dialog "Smart Marking" as data: the controls that its rules read, with the values they start with.
#pragma once

#include "controls/check_box.h"
#include "controls/choice_list.h"
#include "controls/combo_box.h"
#include "controls/list_view.h"

namespace tresmor {

struct FrmSmartDel {
  FrmSmartDel() { lstFolder.AddColumn({"Folders"}); }

  // Mark all files of a group but one.
  ChoiceList lstDate{{"(Unspecified)", "Newer File", "Older File!"}};
  ChoiceList lstSize{{"(Unspecified)", "Largest File", "Smallest File!"}};
  ChoiceList lstVer{{"(Unspecified)", "Newer Version", "Older Version!"}};

  ListView lstFolder;  // folders with the separator at their ends; the selected ones are meant
  CheckBox chkSubFolder{true, "Sub-folder"};
  ComboBox cmbPattern;  // patterns of names with ";" between them

  // Of the groups that are marked wholly, unmark one file.
  CheckBox chkLeaveAtLeast1{true, "Keep at least one:"};
  ChoiceList lstLeaveDate{{"(Unspecified)", "Keep Newest Files", "Keep Oldest Files!"}, 1};
  ChoiceList lstLeaveVer{{"(Unspecified)", "Keep Newest Version", "Keep Oldest Version!"}};
};

}  // namespace tresmor
