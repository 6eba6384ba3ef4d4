// Small pictures of every format that the preview knows: 40 pixels wide, 20 high, the left half red, the right one
// blue.
#pragma once

#include <QImage>
#include <string>
#include <vector>

namespace tresmor {

inline constexpr int kSampleWidth = 40;
inline constexpr int kSampleHeight = 20;

struct Sample {
  std::string extension;
  std::string bytes;
  QRgb left;  // the colour, which not every format can keep exactly
};
std::vector<Sample> AllSamples();

// The left half red, the right one blue.
QImage TwoHalves(int width, int height);
// By Qt's writer of this name.
std::string Written(const QImage& picture, const char* format);

// A jpg whose Exif data tell how it is to be turned.
std::string TurnedJpg(int width, int height, std::uint16_t orientation);
std::string IconOf(const std::vector<QImage>& pictures);
// Two frames of like size, the second one green.
std::string Gif();
// A gif, and a bmp of 24 bits, that end where their pixels would begin.
std::string GifHeader(std::uint16_t width, std::uint16_t height);
std::string BmpHeader(std::int32_t width, std::int32_t height);
// All of one colour, in a few bytes.
std::string RunLengthBmp(std::int32_t width, std::int32_t height);
std::string Wmf();
// With no word about how large it is meant to be.
std::string BareWmf();
// With four letters of Latin-1 in it.
std::string WmfWithText(const std::string& letters);
// With an image over the left half, a quarter red and a quarter blue.
std::string WmfWithImage();
std::string Emf();

}  // namespace tresmor
