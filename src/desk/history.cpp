#include "desk/history.h"

#include "base/failure.h"
#include "base/number.h"
#include "base/text.h"
#include "desk/options.h"

namespace tresmor {

namespace {

constexpr std::int32_t kMostEntries = 10;  // of a list, presets and separator among them
constexpr int kKeptEntries = 10;           // that are looked for in the store

std::int32_t CountOf(const std::vector<std::string>& labels) { return static_cast<std::int32_t>(labels.size()); }

bool HasSeparatorAt(const ComboBox& cmb, std::int32_t index) {
  return index < cmb.ListCount() && cmb.List(index) == kSeparator;
}

void ClearBox(ComboBox& cmb, const std::vector<std::string>& dizArr) {
  while (cmb.ListCount() > CountOf(dizArr) + 1) cmb.RemoveItem(0);
  cmb.SetText("");
}

}  // namespace

std::int16_t FindListItem(const ComboBox& ctl, std::string_view text) {
  for (std::int32_t i = 0; i < ctl.ListCount(); ++i) {
    const std::int16_t index = CheckedInt16(i);
    if (EqualText(ctl.List(index), text)) return index;
  }
  return -1;
}

void InsTopItem(ComboBox& cmb, const std::string& text) {
  cmb.AddItem("");
  for (std::int32_t i = cmb.ListCount() - 1; i > 0; --i) cmb.SetList(i, cmb.List(i - 1));
  cmb.SetList(0, text);
}

void AddHistory(ComboBox& cmb, const std::vector<std::string>& dizArr) {
  const std::string text = cmb.Text();
  const std::int16_t index = FindListItem(cmb, text);
  if (index > -1) {
    cmb.RemoveItem(index);
  } else if (cmb.ListCount() >= kMostEntries) {
    cmb.RemoveItem(cmb.ListCount() - CountOf(dizArr) - 2);
  }
  InsTopItem(cmb, text);
  cmb.SetText(cmb.List(0));
}

void TakeLatest(ComboBox& cmb) {
  if (cmb.ListCount() >= 2 && cmb.List(0) != kSeparator) cmb.SetText(cmb.List(0));
}

void LoadHistory(const SettingsStore& store, std::initializer_list<KeptHistory> histories) {
  for (int i = 0; i < kKeptEntries; ++i) {
    for (const KeptHistory& history : histories) {
      std::string entry = store.Get(kAppTitle, history.section, std::to_string(i), "");
      if (!entry.empty()) history.cmb.AddItem(std::move(entry));
    }
  }
}

void SaveHistory(SettingsStore& store, std::string_view section, const ComboBox& cmb, const ComboBox& end) {
  for (std::int32_t i = 0; i < cmb.ListCount() && !HasSeparatorAt(end, i); ++i) {
    store.Save(kAppTitle, section, std::to_string(i), cmb.List(i));
  }
}

void ClrHistory(SettingsStore& store, ComboBox& txtPath, ComboBox& txtExt, const Presets& presets) {
  for (const char* const section : {kPathHistory, kExtHistory, kPatternHistory}) {
    PassOverFailure([&] { store.DeleteSection(kAppTitle, section); });
  }
  ClearBox(txtPath, presets.PathDizArr);
  ClearBox(txtExt, presets.FileTypeDizArr);
}

}  // namespace tresmor
