// Pictures in files of the formats that the preview knows: jpg, gif (its first frame), bmp and rle, ico, cur, wmf, emf.
#pragma once

#include <QImage>
#include <QSize>
#include <string>

namespace tresmor {

// None with more pixels is read, unless its format can be scaled while it is decoded.
inline constexpr int kMostPixels = 1 << 27;

// The picture in a regular file, which may stand behind links, told by its content whatever the file is called,
// upright, and scaled down to fit into `bounds` if it is larger. The largest of an icon's pictures.
// ARGB32_Premultiplied; null if there is none that could be read. Takes no care of limits to time and memory other than
// kMostPixels.
QImage ReadPicture(const std::string& path, QSize bounds);

// `size` in its proportions, at most `bounds`, at least a pixel.
QSize FitInto(QSize size, QSize bounds);

}  // namespace tresmor
