#pragma once

#include <string>

#include "base/failure.h"
#include "platform/dialogs.h"

namespace tresmor {

// The box for file work that failed: `sentence`, and on a line of its own the failure's number and description.
void ReportFailure(Dialogs& dialogs, const std::string& sentence, const Failure& failure);

}  // namespace tresmor
