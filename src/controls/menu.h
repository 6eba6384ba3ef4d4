#pragma once

#include "controls/control.h"

namespace tresmor {

// A menu of the menu bar, which can be switched off with all that is in it.
class Menu : public Control {};

}  // namespace tresmor
