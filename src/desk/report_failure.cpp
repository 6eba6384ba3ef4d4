#include "desk/report_failure.h"

namespace tresmor {
namespace {

std::string NumberOf(const Failure& failure) { return std::to_string(static_cast<int>(failure.Number())); }

}  // namespace

void ReportFailure(Dialogs& dialogs, const std::string& sentence, const Failure& failure) {
  dialogs.MessageBox(sentence + "\r\nError : #" + NumberOf(failure) + " " + failure.Description(), BoxIcon::Critical,
                     "Failed", BoxButtons::Ok);
}

void ReportRunTimeError(Dialogs& dialogs, const Failure& failure) {
  dialogs.MessageBox("Run-time error '" + NumberOf(failure) + "':\r\n\r\n" + failure.Description(), BoxIcon::Critical,
                     "", BoxButtons::Ok);
}

}  // namespace tresmor
