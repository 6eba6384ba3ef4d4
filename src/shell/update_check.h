// The program's links to the net: where to look for a new version, and the reminder to do so.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "base/date.h"
#include "desk/options.h"
#include "platform/dialogs.h"
#include "platform/shell.h"

namespace tresmor {

struct ProgramVersion {
  std::int16_t Major = 0;
  std::int16_t Minor = 0;
  std::int16_t Revision = 0;
};

// Opens the page that tells whether there is a newer version. Nothing is read back.
void ChkUpdate(const Shell& shell, ProgramVersion version);

// Asks whether to look for a new version where the last question was 45 days ago or more, counted by midnights, does so
// on a yes, and then has been asked just now, whatever the answer was. `now` asks the local clock. Interface thread.
void RemindOfUpdate(Options& options, const std::function<DateStamp()>& now, const Shell& shell, Dialogs& dialogs,
                    ProgramVersion version);

// What the items of the help menu open.
std::string WebSiteAddress();
std::string SupportAddress();
std::string MailAddress();

// The box about the program. Interface thread.
void ShowAbout(Dialogs& dialogs, ProgramVersion version);

}  // namespace tresmor
