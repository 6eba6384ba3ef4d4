// What the dialog "Options" does.
#pragma once

#include <functional>

#include "controls/combo_box.h"
#include "desk/action_dispatch.h"
#include "desk/options.h"
#include "desk/presets.h"
#include "platform/dialogs.h"
#include "platform/settings_store.h"
#include "shell/frm_options.h"
#include "shell/shell_forms.h"

namespace tresmor {

// What of the program it touches.
struct OptionsOwner {
  Options& options;
  // Whose histories it clears.
  ComboBox& txtPath;
  ComboBox& txtExt;
  const Presets& presets;
  // Of the main window.
  std::function<void()> InitTooltips;
  std::function<void()> RemoveTooltips;
};

struct OptionsPorts {
  SettingsStore& settings;
  Dialogs& dialogs;
  ShellForms& forms;
};

// Interface thread.
class OptionsDialog {
 public:
  OptionsDialog(OptionsOwner owner, const OptionsPorts& ports) : owner_(std::move(owner)), ports_(ports) {}

  // Fills a form from the options, shows it and returns when it is closed. Only OKButton changes the options, apart
  // from the flags of the messages, which cmdResetTips clears at once; the settings hear of them at the program's end.
  // The histories are cleared at once, in the settings too.
  void Show();

 private:
  void Load(FrmOptions& frm) const;
  void Bind(FrmOptions& frm, ActionDispatch& inDialog);
  void Ok(FrmOptions& frm);
  void Browse(FrmOptions& frm);
  void ResetTips();

  const OptionsOwner owner_;
  const OptionsPorts ports_;
};

}  // namespace tresmor
