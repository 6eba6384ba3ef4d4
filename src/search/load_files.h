// The folder walk: from scope rows to the catalogue.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "base/stop_token.h"
#include "base/thread_pool.h"
#include "platform/file_system.h"
#include "search/col_files.h"
#include "search/scope_row.h"
#include "search/search_observer.h"

namespace tresmor {

// Folders that the walk must not enter and that no row may start in, each with a separator at its end. A second equal
// key counts as present.
class ProtectDir {
 public:
  explicit ProtectDir(PathStyle style) : style_(style) {}
  void Add(std::string_view folder);
  bool Holds(std::string_view folder) const { return keys_.contains(style_.Key(folder)); }
  // Whether `text` begins with one of the keys.
  bool HoldsStartOf(std::string_view text) const;

 private:
  PathStyle style_;
  std::unordered_set<std::string> keys_;
};

struct WalkPorts {
  const FileSystem& files;
  ThreadPool& pool;
  const StopToken& stop;
  SearchObserver& observer;
};

// Walks every included row whose SearchTarget says bSrchTarget, from first to last, and adds what passes its criteria.
// `hidden`: also take hidden files and enter hidden folders. Sets the progress text at each folder, highlights each row
// that is walked and moves the bar by rows. A stop leaves what was found so far. Throws Failure for a size or date cell
// that can't convert.
void LoadPathList(ColFiles& colFiles, const ProtectDir& protectDir, bool bSrchTarget, bool hidden,
                  const std::vector<ScopeRow>& rows, const WalkPorts& ports);

}  // namespace tresmor
