// What the folder walk works with.
#pragma once

#include "base/stop_token.h"
#include "base/thread_pool.h"
#include "platform/file_system.h"
#include "search/search_observer.h"

namespace tresmor {

struct WalkPorts {
  const FileSystem& files;
  ThreadPool& pool;
  const StopToken& stop;
  SearchObserver& observer;
};

}  // namespace tresmor
