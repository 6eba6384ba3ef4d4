// The heads of files: their first bytes, by which big runs are cut and portions are found.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/stop_token.h"
#include "base/thread_pool.h"
#include "platform/file_system.h"
#include "search/file_props.h"
#include "search/kept_files.h"
#include "search/limits.h"
#include "search/search_observer.h"

namespace tresmor {

struct HeadPorts {
  const FileSystem& files;
  KeptFiles& kept;  // what was opened stays there
  ThreadPool& pool;
  const StopToken& stop;
  SearchObserver& observer;  // gets the index of each file whose head is read as its tag
  const SearchLimits& limits;
};

// For each record from `first` to `last` a number that orders the heads as their bytes do and is equal for equal heads.
// A head shorter than limits.head is filled with zero bytes, and so is what can't be read of one, whose record becomes
// a read error. Memory stays bounded: where all heads don't fit, a share of each is read and only those that are still
// equal are read on. After a stop the ranks mean nothing.
std::vector<std::uint32_t> RankHeads(FileProps& table, std::int32_t first, std::int32_t last, const HeadPorts& ports);

// The head of one file, filled with zero bytes.
std::string ReadHead(FileProps& table, std::int32_t index, const HeadPorts& ports);

}  // namespace tresmor
