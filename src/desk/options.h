// What the user has settled, as the running program works with it. Kept from run to run by persist/settings.h.
#pragma once

#include <cstdint>
#include <string>

#include "base/date.h"

namespace tresmor {

// The product's title: that of boxes without one, and the application of the settings.
inline constexpr char kAppTitle[] = "Tresmor";

// Where the settings keep all this but the histories.
inline constexpr char kOptionsSection[] = "Options";

// Topic of the help about the options and what else speaks of them: tips, and messages that can be turned off.
inline constexpr std::int32_t kOptionsHelp = 112;

struct Options {
  DateStamp LastUpdateChk = kZeroDate;  // last reminder to look for a new version, local clock
  std::int16_t NoTooltipsOpt = 0;       // 1 is tooltips off
  std::int16_t ShowTipsOpt = 0;         // 1 is a tip at each start
  std::string DefaultEditorOpt;

  // Of guarded messages (desk/guarded_msg.h): 1 is never again.
  std::int16_t DontShowWarmProtWin = 0;
  std::int16_t DontShowTipOrgNDup = 0;
  std::int16_t DontShowTipOrgNDupSM = 0;
  std::int16_t DontShowTipSmartMark = 0;
  std::int16_t DontShowSrchPersonal = 0;
  std::int16_t DontShowTipLongSrch = 0;
};

}  // namespace tresmor
