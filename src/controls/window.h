#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "controls/placed_control.h"

namespace tresmor {

enum class WindowState : std::int16_t { Normal = 0, Minimised = 1, Maximised = 2 };

// A window of the program's. Its place is that of its outer edges, with frame and menu bar; until it shows, it is the
// room for controls that it was drawn with. A window that fills the screen is maximised. Whoever shows it keeps place
// and state true to the screen, the user's changes included, and calls what the user sets off. A size that the
// program writes comes out as whole pixels, rounded up, so that what had room keeps it.
class Window : public PlacedControl {
 public:
  explicit Window(std::string caption, Place place = {})
      : PlacedControl(place),
        Caption(*this, Notice::What::Text, std::move(caption)),
        State(*this, Notice::What::State, WindowState::Normal),
        ScaleWidth(*this, Notice::What::Client, place.width),
        ScaleHeight(*this, Notice::What::Client, place.height) {}

  Property<std::string> Caption;
  Property<WindowState> State;  // written by whoever shows the window alone
  // Twips that are left for controls; measured by whoever shows the window.
  Property<float> ScaleWidth;
  Property<float> ScaleHeight;

  std::function<void()> OnResize;       // after each change of the size or the state, whoever made it
  std::function<bool()> OnQueryUnload;  // whether it may close
  std::function<void()> OnUnload;       // it is about to go

  // Closes it, as its frame does. Gives whether it closed.
  bool Unload() {
    if (OnQueryUnload && !OnQueryUnload()) return false;
    if (OnUnload) OnUnload();
    Visible = false;
    return true;
  }

 protected:
  ~Window() = default;
};

}  // namespace tresmor
