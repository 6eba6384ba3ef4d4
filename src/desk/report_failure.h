#pragma once

#include <string>

#include "base/failure.h"
#include "platform/dialogs.h"

namespace tresmor {

// The box for file work that failed: `sentence`, and on a line of its own the failure's number and description.
void ReportFailure(Dialogs& dialogs, const std::string& sentence, const Failure& failure);

// The box for a failure that nobody had anything better to say about.
void ReportRunTimeError(Dialogs& dialogs, const Failure& failure);

// Gives what `step` gives, a bool. If it throws a Failure, or memory runs out, that box is shown and the result is
// false.
template <class Step>
bool DoOrReport(Dialogs& dialogs, const std::string& sentence, Step&& step) {
  try {
    return step();
  } catch (...) {
    ReportFailure(dialogs, sentence, CaughtFailure());
    return false;
  }
}

}  // namespace tresmor
