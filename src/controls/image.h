#pragma once

#include "controls/control.h"

namespace tresmor {

// A fixed picture, of which the program only says whether it shows.
class Image : public Control {};

}  // namespace tresmor
