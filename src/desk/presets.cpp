#include "desk/presets.h"

#include <iterator>

namespace tresmor {

namespace {

// Numbers of the desktop's folders.
constexpr int kDesktop = 0;
constexpr int kDocuments = 5;
constexpr int kFavourites = 6;

}  // namespace

Presets BuildPresets(const Shell& shell) {
  return {
      {"Photos / Images", "Music / Songs", "Movie Clips", "Downloads", "All Files"},
      {"*.jpg;*.gif;*.bmp", "*.mp3;*.wav;*.rm;*.ra;*.mid", "*.mpg;*.rm;*.avi;*.ram;*.mov;*.wmv;*.asf", "*.exe;*.zip",
       "*.*"},
      {"My Documents", "Desktop", "My Favourites"},
      {shell.spFolder(kDocuments), shell.spFolder(kDesktop), shell.spFolder(kFavourites)},
  };
}

void AddPresets(ComboBox& combo, const std::vector<std::string>& labels) {
  combo.AddItem(kSeparator);
  for (const std::string& label : labels) combo.AddItem(label);
}

void PickPreset(ComboBox& combo, const std::vector<std::string>& values) {
  const std::int32_t index = combo.ListIndex();  // which a new text undoes
  if (index < 0) return;
  const std::ptrdiff_t preset = index - (combo.ListCount() - std::ssize(values));
  if (preset >= 0) combo.SetText(values[static_cast<std::size_t>(preset)]);
  if (combo.List(index) == kSeparator) combo.SetText("");
}

}  // namespace tresmor
