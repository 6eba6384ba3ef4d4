// The dialog in front of deleting, moving and copying marked files, as data.
#pragma once

#include <cstdint>
#include <string>

#include "controls/button.h"
#include "controls/check_box.h"
#include "controls/frame.h"
#include "controls/image.h"
#include "controls/label.h"
#include "controls/option_button.h"
#include "controls/text_box.h"

namespace tresmor {

enum : std::int32_t { kDeleteMode = 0, kMoveMode = 1, kCopyMode = 2 };

// There is one, which is hidden after each use and keeps the user's ticks and destination for the next. Interface
// thread. Its frame and the Escape key close it by CancelButton.
//
// Whoever shows it gives its controls their places: imgWarning and lblMsg beside each other, the others below, in the
// order of the members. What is hidden takes no room, and the next one has its place.
class FrmFileOper : public Control {
 public:
  FrmFileOper();

  std::int32_t OperMode = kDeleteMode;
  std::string DestPath;

  Property<std::string> Caption{*this, Notice::What::Text};
  Image imgWarning;
  Label lblMsg;
  Label lblNotes;  // in bold
  Frame fraDest{"Destination"};
  TextBox txtDestination;  // in fraDest, as is the next
  Button cmdBrowse{"&Browse..."};
  CheckBox chkDirStruct{false, "directory structure"};
  CheckBox chkOpenDestDir{false, "Open destination folder after "};
  CheckBox chkRemoveEmptyDir{false, "Remove empty directories after "};
  Frame fraDel;
  OptionButton optRecycleBin{
      "Move to recycle bin (*If the property of recycle bin is set to 'do not move file to recycle bin', "
      "files will be deleted permanently at any rate.)",
      true};  // in fraDel, as is the next
  OptionButton optDelPermanently{"Delete permanently"};
  CheckBox chkYesToAll{false, "Respond with Yes to All for any dialog box that is displayed. "};
  Button OKButton{"&Yes"};
  Button CancelButton{"&No"};

  // Distances in twips: from imgWarning to lblMsg on its right, from chkOpenDestDir to chkRemoveEmptyDir below it.
  static constexpr float kBesideWarning = 20;
  static constexpr float kBelowOpenDest = 10;

  // Turns the dialog to a mode: what shows, and with which texts. `files` is the list of files under the
  // question. Ticks stay.
  void SetOperMode(std::int32_t mode, const std::string& files);
};

}  // namespace tresmor
