#include "desk/check_date.h"

#include "base/date.h"

namespace tresmor {

bool CheckDateText(Dialogs& dialogs, std::string_view value) {
  if (value.empty() || IsDateText(value)) return true;
  dialogs.MessageBox("Please input a valid date. e.g. 2 Jul 2003", BoxIcon::Critical, "Invalid date", BoxButtons::Ok);
  return false;
}

}  // namespace tresmor
