#include "desk/report_failure.h"

namespace tresmor {

void ReportFailure(Dialogs& dialogs, const std::string& sentence, const Failure& failure) {
  const std::string number = std::to_string(static_cast<int>(failure.Number()));
  dialogs.MessageBox(sentence + "\r\nError : #" + number + " " + failure.Description(), BoxIcon::Critical, "Failed",
                     BoxButtons::Ok);
}

}  // namespace tresmor
