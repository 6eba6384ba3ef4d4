#include "platform/picture_protocol.h"

#include <array>
#include <cstring>

namespace tresmor {

namespace {

constexpr std::int32_t kMark = 0x54505831;
using Request = std::array<std::int32_t, 2>;  // width, height
using Header = std::array<std::int32_t, 3>;   // mark, width, height

template <typename Numbers>
std::string BytesOf(const Numbers& numbers) {
  std::string bytes(sizeof numbers, '\0');
  std::memcpy(bytes.data(), numbers.data(), sizeof numbers);
  return bytes;
}

// `bytes` has to be long enough.
template <typename Numbers>
Numbers NumbersOf(std::string_view bytes) {
  Numbers numbers;
  std::memcpy(numbers.data(), bytes.data(), sizeof numbers);
  return numbers;
}

bool IsSide(std::int32_t pixels, std::int32_t most) { return pixels >= 1 && pixels <= most; }

}  // namespace

std::string EncodePictureRequest(const PictureRequest& request) {
  return BytesOf(Request{request.width, request.height}) + request.file;
}

std::optional<PictureRequest> DecodePictureRequest(std::string_view bytes) {
  if (bytes.size() <= sizeof(Request)) return std::nullopt;
  const auto [width, height] = NumbersOf<Request>(bytes);
  if (!IsSide(width, kMostPixelsASide) || !IsSide(height, kMostPixelsASide)) return std::nullopt;
  return PictureRequest{std::string(bytes.substr(sizeof(Request))), width, height};
}

std::string EncodePictureHeader(std::int32_t width, std::int32_t height) {
  return BytesOf(Header{kMark, width, height});
}

std::optional<std::size_t> PictureAnswerSize(std::string_view begun, const PictureRequest& asked) {
  if (begun.size() < sizeof(Header)) return 0;
  const auto [mark, width, height] = NumbersOf<Header>(begun);
  if (mark != kMark || !IsSide(width, asked.width) || !IsSide(height, asked.height)) return std::nullopt;
  const std::size_t pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  const std::size_t size = sizeof(Header) + pixels * sizeof(std::uint32_t);
  return begun.size() <= size ? std::optional(size) : std::nullopt;
}

SharedImage DecodePictureAnswer(std::string_view answer, const PictureRequest& asked) {
  if (PictureAnswerSize(answer, asked) != answer.size() || answer.empty()) return nullptr;
  const auto [mark, width, height] = NumbersOf<Header>(answer);
  answer.remove_prefix(sizeof(Header));
  PixelImage image{width, height, std::vector<std::uint32_t>(answer.size() / sizeof(std::uint32_t))};
  std::memcpy(image.pixels.data(), answer.data(), answer.size());
  return std::make_shared<const PixelImage>(std::move(image));
}

}  // namespace tresmor
