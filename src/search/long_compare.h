// One comparison of long files, by all threads.
#pragma once

#include <memory>
#include <vector>

#include "base/thread_pool.h"
#include "search/comp_file_cnt.h"

namespace tresmor {

// Whether a comparison of this range is long enough to be shared among threads.
bool IsLong(const CompareRange& range, SizeRule rule, const SearchLimits& limits);

// The strict comparison of a range of duplicates, each thread on stretches of its own: compares[k] is thread k's. The
// verdicts are those of FileCompare::CompFileCnt.
void CompLongFiles(FileProps& table, const CompareRange& range, std::vector<std::unique_ptr<FileCompare>>& compares,
                   ThreadPool& pool);

}  // namespace tresmor
