// The tip of the day.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "controls/button.h"
#include "controls/check_box.h"
#include "controls/frame.h"
#include "controls/image.h"
#include "controls/label.h"
#include "desk/action_dispatch.h"
#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "platform/settings_store.h"

namespace tresmor {

struct TipPorts {
  const FileSystem& files;
  SettingsStore& settings;
  Dialogs& dialogs;
  std::function<double()> random;  // 0 or more, less than 1
};

// Shown, over the main window and not modal, while it is Visible. Its frame and the Escape key close it by cmdOK.
// Interface thread.
class FrmTip : public Control {
 public:
  explicit FrmTip(const TipPorts& ports);

  Property<std::string> Caption{*this, Notice::What::Text, "Tip of the Day"};
  Frame Picture1;  // with the next three
  Image imgTip;
  Label Label1;
  Label lblTipText;
  CheckBox chkLoadTipsAtStartup{true,
                                "&Show Tips at Startup"};  // of the settings alone: the options know nothing of it
  Button cmdNextTip{"&Next Tip"};
  Button cmdOK{"OK"};

  // Makes it visible with one of the tips of the file TIPOFDAY.TXT in that folder, or with how to come by such a file.
  // Throws the Failure of a file that is there and can't be read.
  void Load(const std::string& programFolder);

  std::vector<std::string> Tips;
  std::int32_t CurrentTip = 0;  // of Tips, from 1

  // Adds each line of a file to the tips and shows one of them. False if there is no such file.
  bool LoadTips(const std::string& sFile);
  // Shows any tip, perhaps the same again.
  void NextTip();
  void DisplayCurrentTip();

 private:
  const TipPorts ports_;
  ActionDispatch inDialog_;
};

}  // namespace tresmor
