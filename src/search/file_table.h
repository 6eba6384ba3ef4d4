// From the catalogue to the table of file records.
#pragma once

#include "base/stop_token.h"
#include "base/thread_pool.h"
#include "platform/file_system.h"
#include "search/col_files.h"
#include "search/file_props.h"
#include "search/search_observer.h"

namespace tresmor {

// Reads each catalogued file's length as it is now; the records are in the order of the catalogue. Left out are files
// that have gone since the walk or whose length can't be told (the latter with a box each), and every entry that is the
// same file as an earlier one under another name: it could only ever be found to be a duplicate of itself. After a stop
// the table is not to be used.
FileProps FillTable(const ColFiles& colFiles, const FileSystem& files, ThreadPool& pool, const StopToken& stop,
                    SearchObserver& observer);

}  // namespace tresmor
