#pragma once

#include <string_view>

#include "platform/dialogs.h"

namespace tresmor {

// Whether a text that the user typed for a date may stand: it is empty or IsDateText. If not, a box says so; the caller
// leads the user back to the text. Interface thread.
bool CheckDateText(Dialogs& dialogs, std::string_view value);

}  // namespace tresmor
