// Many comparisons at once, with the outcome of one after the other.
#pragma once

#include <vector>

#include "base/stop_token.h"
#include "base/thread_pool.h"
#include "platform/file_system.h"
#include "search/limits.h"
#include "search/search_observer.h"
#include "search/srch_portion.h"

namespace tresmor {

struct CompareChoices {
  bool tolerant = false;
  bool isAllSrchTarget = false;
  SizeRule rule = SizeRule::SameSize;
};

// Compares each run, in any order and by all threads: runs share no records, except one that reaches back, which waits
// until all in front of it are done. Long files come first, each run of them by all threads together. The tag starts at
// the number of files that are in no run, and goes on with those of each run that is done.
void CompareRuns(FileProps& table, const std::vector<CompareRun>& runs, const CompareChoices& choices,
                 const HeadPorts& ports);

}  // namespace tresmor
