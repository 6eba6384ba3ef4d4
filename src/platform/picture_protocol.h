// What the program and its picture helper, tresmor-picture, say to each other. One process of the helper decodes one
// picture: it reads the request from stdin up to its end, writes the answer to stdout and ends with status 0, or it
// ends in any other way if there is no picture. Numbers are in the machine's own byte order, as both run on one
// machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/pixel_image.h"

namespace tresmor {

// Neither is ever larger, in pixels; more can't be asked for.
inline constexpr std::int32_t kMostPixelsASide = 16384;

// Width and height as 32-bit numbers, then the bytes of the path up to the end.
struct PictureRequest {
  std::string file;
  std::int32_t width = 0;  // the picture is scaled down, never up, until it has no more pixels than these
  std::int32_t height = 0;
};
std::string EncodePictureRequest(const PictureRequest& request);
// None for what is no request, or one for sides below 1 or above the most.
std::optional<PictureRequest> DecodePictureRequest(std::string_view bytes);

// The answer begins with this: a 32-bit number that marks it, the picture's width and its height. The pixels follow as
// PixelImage has them, and nothing behind those.
std::string EncodePictureHeader(std::int32_t width, std::int32_t height);

// How long the whole answer will be, by what has come of it; 0 while that can't be told yet. None if it is no answer to
// `asked`, or already longer.
std::optional<std::size_t> PictureAnswerSize(std::string_view begun, const PictureRequest& asked);
// The picture of a whole answer. None if it is no answer to `asked`, or not all of it.
SharedImage DecodePictureAnswer(std::string_view answer, const PictureRequest& asked);

}  // namespace tresmor
