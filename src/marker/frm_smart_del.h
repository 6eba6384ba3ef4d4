// The dialog "Smart Marking" as data: the controls that its rules read, and what shows them.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "controls/button.h"
#include "controls/check_box.h"
#include "controls/choice_list.h"
#include "controls/combo_box.h"
#include "controls/frame.h"
#include "controls/label.h"
#include "controls/list_view.h"
#include "controls/tab_strip.h"

namespace tresmor {

// One is made for each use, hidden and without folders and patterns. Interface thread. Its frame and the Escape key
// close it by CancelButton.
class FrmSmartDel : public Control {
 public:
  FrmSmartDel();

  Property<std::string> Caption{*this, Notice::What::Text, "Smart Marking"};
  Label lblCriteria;
  Label lblRequirement;
  TabStrip TabOptions{{"&Basic", "&More"}, {0, 0, 8100, 5700}};
  std::array<Frame, 2> frmOptions;  // one a tab; the one on show fills the room of TabOptions
  std::int16_t CurFrame = 0;        // the index of that

  // First frame. Mark all files of a group but one.
  ChoiceList lstDate{{"(Unspecified)", "Newer File", "Older File!"}};
  ChoiceList lstSize{{"(Unspecified)", "Largest File", "Smallest File!"}};
  ChoiceList lstVer{{"(Unspecified)", "Newer Version", "Older Version!"}};

  // Second frame.
  ListView lstFolder;  // folders with the separator at their ends; the selected ones are meant
  Label lblFolderNote;
  CheckBox chkSubFolder{true, "Sub-folder"};
  Button cmdSelAll{"Select All"};
  Button cmdClrAll{"Clear All"};
  Button cmdGetSelections{"Get selections"};
  ComboBox cmbPattern;  // patterns of names with ";" between them

  // Of the groups that are marked wholly, unmark one file.
  CheckBox chkLeaveAtLeast1{true, "Keep at least one:"};
  ChoiceList lstLeaveDate{{"(Unspecified)", "Keep Newest Files", "Keep Oldest Files!"}, 1};
  ChoiceList lstLeaveVer{{"(Unspecified)", "Keep Newest Version", "Keep Oldest Version!"}};

  Label lblToDo;
  Button cmdMark{"Mark"};  // in bold
  Button cmdClearMarks{"&Clear Marks"};
  Button CancelButton{"Close"};
  Button cmdHelp{"&Help (F1)"};

 private:
  void ShowFrame();
  void PlaceFrames();
};

}  // namespace tresmor
