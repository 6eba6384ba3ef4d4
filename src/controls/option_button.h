#pragma once

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "controls/placed_control.h"

namespace tresmor {

// One of several choices, of which one is chosen at a time.
class OptionButton : public PlacedControl {
 public:
  explicit OptionButton(std::string caption, bool chosen = false, Place place = {})
      : PlacedControl(place),
        Caption(*this, Notice::What::Text, std::move(caption)),
        Value(*this, Notice::What::Value, chosen) {}

  Property<std::string> Caption;
  Property<bool> Value;
};

// From now on choosing one of `options` clears the others. They live equally long.
inline void JoinOptions(std::initializer_list<OptionButton*> options) {
  const std::vector<OptionButton*> all = options;
  for (OptionButton* const option : all) {
    option->Listen([option, all](const Notice& notice) {
      if (notice.what != Notice::What::Value || notice.when != Notice::When::After || !option->Value()) return;
      for (OptionButton* const other : all) {
        if (other != option) other->Value = false;
      }
    });
  }
}

}  // namespace tresmor
