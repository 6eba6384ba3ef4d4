// The search driver: from scope rows to findings.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "base/stop_token.h"
#include "base/thread_pool.h"
#include "platform/file_system.h"
#include "platform/shell.h"
#include "platform/version_reader.h"
#include "search/limits.h"
#include "search/scope_row.h"
#include "search/search_observer.h"

namespace tresmor {

// The types of finding, in the order of the check list that offers them.
enum class SrchType : int { ZeroSize = 0, Duplicates = 1, SameName = 2, Portions = 3 };
inline constexpr int kSrchTypes = 4;

// All that a search reads of the user's choices, taken before it starts.
struct SearchRequest {
  std::vector<ScopeRow> rows;
  std::array<bool, kSrchTypes> types{};
  bool tolerant = false;         // the loose comparison
  bool hidden = false;           // hidden files and folders too
  bool protectWinDir = true;     // keep out of the system's own folders
  bool versions = false;         // read the version of each file that is listed
  bool dates = true;             // read the date of each file that is listed, which costs a look at each
  bool isAllSrchTarget = false;  // every row, excluded ones included, is a search target

  bool Wants(SrchType type) const { return types[static_cast<std::size_t>(type)]; }
};

struct SearchPorts {
  const FileSystem& files;
  const Shell& shell;
  const VersionReader& versions;
  ThreadPool& pool;
  const StopToken& stop;
  SearchObserver& observer;
};

// Runs a whole search on the calling thread and the pool. Gives the highest index of the table, that is, one less than
// the records in it; 0 if there were none, or if the search was stopped while they were loaded or before the
// duplicates that it was to find. What was found until a stop has been handed to the observer. The findings are the
// same with any number of threads. Throws Failure for a scope row that can't be read.
std::int64_t ExecSrch(const SearchRequest& request, const SearchPorts& ports, const SearchLimits& limits = {});

}  // namespace tresmor
