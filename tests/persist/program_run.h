// One run of the program, as its settings see it.
#pragma once

#include "persist/settings.h"
#include "support/fake_shell.h"
#include "support/history_boxes.h"

namespace tresmor::tests {

struct ProgramRun : HistoryBoxes {
  explicit ProgramRun(SettingsStore& kept) : store(kept) { LoadSettings(store, shell, now, Owner()); }

  SettingsOwner Owner() { return {txtPath, txtExt, presets, options}; }
  void End() { SaveSettings(store, Owner()); }

  SettingsStore& store;
  FakeShell shell;
  DateStamp now = *ParseStamp("2003/07/02 13:05:00");
  Options options;
};

}  // namespace tresmor::tests
