// Menus of a menu bar, which also open at the pointer.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "controls/control.h"

namespace tresmor {

// "&" stands before the letter that chooses it. `key` is the shortcut, such as "Ctrl+O", or empty.
class MenuItem : public Control {
 public:
  explicit MenuItem(std::string caption, std::string key = "", std::int32_t help = 0)
      : caption_(std::move(caption)), key_(std::move(key)) {
    HelpContextID = help;
  }

  const std::string& Caption() const { return caption_; }
  const std::string& Key() const { return key_; }

  std::function<void()> OnClick;  // chosen by the user

 private:
  std::string caption_;
  std::string key_;
};

// A menu that is switched off takes all that is in it along, shortcuts too.
class Menu : public Control {
 public:
  // No item stands for a line between others. Items outlive the menu. `help` goes for those without a topic of their
  // own.
  Menu(std::string caption, std::vector<MenuItem*> items, std::int32_t help = 0)
      : caption_(std::move(caption)), items_(std::move(items)) {
    HelpContextID = help;
  }

  const std::string& Caption() const { return caption_; }
  const std::vector<MenuItem*>& Items() const { return items_; }

  // It is about to open, or one of its shortcuts was typed: what can't be chosen now is to be switched off.
  std::function<void()> OnOpen;

  // The shortcut of `item`, one of its own, was typed. What can be chosen is worked out first, as if it had opened.
  void Shortcut(const MenuItem& item) {
    if (!Enabled()) return;
    if (OnOpen) OnOpen();
    if (item.Enabled() && item.OnClick) item.OnClick();
  }

  // Asks whoever shows it to open it at the pointer.
  void PopUp() { Tell(Notice::What::PopUp, Notice::When::After); }

 private:
  std::string caption_;
  std::vector<MenuItem*> items_;
};

}  // namespace tresmor
