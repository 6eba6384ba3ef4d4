// One run of the program, as its settings see it.
#pragma once

#include <string>

#include "desk/history.h"
#include "persist/settings.h"
#include "support/fake_shell.h"

namespace tresmor::tests {

struct ProgramRun {
  explicit ProgramRun(SettingsStore& kept) : store(kept) { LoadSettings(store, shell, now, Owner()); }

  SettingsOwner Owner() { return {txtPath, txtExt, presets, options}; }
  void End() { SaveSettings(store, Owner()); }
  void EnterPath(const std::string& text) {
    txtPath.SetText(text);
    AddHistory(txtPath, presets.PathDizArr);
  }
  void EnterExt(const std::string& text) {
    txtExt.SetText(text);
    AddHistory(txtExt, presets.FileTypeDizArr);
  }

  SettingsStore& store;
  FakeShell shell;
  DateStamp now = *ParseStamp("2003/07/02 13:05:00");
  ComboBox txtPath;
  ComboBox txtExt;
  Presets presets;
  Options options;
};

}  // namespace tresmor::tests
