#include "persist/settings.h"

#include <string>

#include "base/failure.h"
#include "base/number.h"
#include "desk/guarded_msg.h"
#include "desk/history.h"

namespace tresmor {

namespace {

constexpr char kLastUpdateCheck[] = "LastUpdateCheck";
constexpr char kNoTooltips[] = "NoTooltips";
constexpr char kShowTips[] = "Show Tips at Startup";
constexpr char kDefaultEditor[] = "DefaultEditor";

std::string GetOption(const SettingsStore& store, const char* key, const std::string& fallback) {
  return store.Get(kAppTitle, kOptionsSection, key, fallback);
}

void LoadNumber(const SettingsStore& store, const char* key, const char* fallback, std::int16_t& option) {
  PassOverFailure([&] { option = CheckedInt16(ParseInt32(GetOption(store, key, fallback))); });
}

void LoadOptions(const SettingsStore& store, const Shell& shell, DateStamp now, Options& options) {
  const auto checked = ParseDate(GetOption(store, kLastUpdateCheck, FormatStamp(now)));
  if (checked) options.LastUpdateChk = *checked;
  LoadNumber(store, kNoTooltips, "0", options.NoTooltipsOpt);
  LoadNumber(store, kShowTips, "1", options.ShowTipsOpt);
  options.DefaultEditorOpt = GetOption(store, kDefaultEditor, shell.DefaultEditor());
  for (const GuardedMessage& message : kGuardedMessages) LoadNumber(store, message.Key, "0", options.*message.Flag);
}

void SaveOption(SettingsStore& store, const char* key, const std::string& value) {
  PassOverFailure([&] { store.Save(kAppTitle, kOptionsSection, key, value); });
}

}  // namespace

void LoadSettings(const SettingsStore& store, const Shell& shell, DateStamp now, SettingsOwner owner) {
  owner.presets = BuildPresets(shell);
  LoadHistory(store, {{kPathHistory, owner.txtPath}, {kExtHistory, owner.txtExt}});
  AddPresets(owner.txtExt, owner.presets.FileTypeDizArr);
  AddPresets(owner.txtPath, owner.presets.PathDizArr);
  LoadOptions(store, shell, now, owner.options);
}

bool ShowTipsAtStartup(const SettingsStore& store) {
  std::int16_t shows = 0;
  LoadNumber(store, kShowTips, "1", shows);
  return shows == 1;
}

void SaveShowTips(SettingsStore& store, std::int16_t shows) {
  store.Save(kAppTitle, kOptionsSection, kShowTips, std::to_string(shows));
}

void SaveSettings(SettingsStore& store, SettingsOwner owner) {
  // The patterns' separator decides on the folders too: users have come to expect what a start brings back.
  SaveHistory(store, kPathHistory, owner.txtPath, owner.txtExt);
  SaveHistory(store, kExtHistory, owner.txtExt, owner.txtExt);
  const Options& options = owner.options;
  SaveOption(store, kLastUpdateCheck, FormatNamedDay(options.LastUpdateChk));
  PassOverFailure([&] { SaveShowTips(store, options.ShowTipsOpt); });
  SaveOption(store, kNoTooltips, std::to_string(options.NoTooltipsOpt));
  SaveOption(store, kDefaultEditor, options.DefaultEditorOpt);
  for (const GuardedMessage& message : kGuardedMessages) {
    SaveOption(store, message.Key, std::to_string(options.*message.Flag));
  }
}

}  // namespace tresmor
