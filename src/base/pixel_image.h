#pragma once

#include <cstdint>
#include <memory>
#include <vector>

namespace tresmor {

// A picture as it is painted: rows from the top, pixels as 0xAARRGGBB, colours premultiplied by alpha.
struct PixelImage {
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::vector<std::uint32_t> pixels;
};

// Pictures are shared and never changed.
using SharedImage = std::shared_ptr<const PixelImage>;

}  // namespace tresmor
