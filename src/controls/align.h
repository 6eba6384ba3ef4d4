#pragma once

#include <cstdint>

namespace tresmor {

// The edge of what it stands in that a control keeps to, and fills.
enum class Align : std::int16_t { None = 0, Top = 1, Bottom = 2 };

}  // namespace tresmor
