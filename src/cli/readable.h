// Figures for people.
#pragma once

#include <cstdint>
#include <string>

namespace tresmor {

// "1 file", "2 files".
std::string CountOf(std::int64_t count, const char* what);
// "58.59 KB"; units end at GB, and what is past them stands in bytes.
std::string ReadableSize(std::int64_t bytes);

}  // namespace tresmor
