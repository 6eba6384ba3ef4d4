#pragma once

#include <QColor>
#include <cstdint>

namespace tresmor {

// Whether texts are bright on a dark ground in the desktop's present colours.
bool IsDark();

// A colour of text, 0x00BBGGRR, as it is on a bright ground; on a dark one its hue, bright enough to be read.
QColor ReadableColor(std::uint32_t color);

}  // namespace tresmor
