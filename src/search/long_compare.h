// One comparison of long files, by all threads.
#pragma once

#include <memory>
#include <vector>

#include "base/thread_pool.h"
#include "search/comp_file_cnt.h"

namespace tresmor {

// Whether a comparison of this range is long enough to be shared among threads, and descriptors are enough for it.
bool IsLong(const CompareRange& range, SizeRule rule, const ComparePorts& ports);

// The strict comparison of a range of duplicates, each thread on stretches of its own: compares[k] is thread k's. Every
// thread must be able to keep all files open. The verdicts are those of FileCompare::CompFileCnt, which has the last
// word where a file fails.
void CompLongFiles(FileProps& table, const CompareRange& range, std::vector<std::unique_ptr<FileCompare>>& compares,
                   ThreadPool& pool);

}  // namespace tresmor
