// How many files this process may have open.
#pragma once

#include <cstddef>

namespace tresmor {

// Raises the process's limit as far as it may, and gives it; 0 if the system doesn't tell. Any thread.
std::size_t RaiseOpenLimit();

// For a new process that is about to become another program, which gets the limit as it was before it was raised: some
// close every number up to it, or keep a table of that length. Takes neither memory nor a lock.
void PutBackOpenLimit();

}  // namespace tresmor
