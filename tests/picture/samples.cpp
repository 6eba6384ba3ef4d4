#include "picture/samples.h"

#include <QBuffer>
#include <QImageWriter>
#include <QPainter>
#include <cstring>

namespace tresmor {

namespace {

using std::string;

// Numbers of the size of their type, the lowest byte first as all of these formats but one have them.
template <typename... Numbers>
string Bytes(Numbers... numbers) {
  string bytes;
  (bytes.append(reinterpret_cast<const char*>(&numbers), sizeof numbers), ...);
  return bytes;
}

using U8 = std::uint8_t;
using I16 = std::int16_t;
using U16 = std::uint16_t;
using I32 = std::int32_t;
using U32 = std::uint32_t;

string BmpHead(I32 width, I32 height, U16 bits, U32 compression, U32 colours) {
  const U32 start = 54 + colours * 4;
  return "BM" + Bytes(U32{0}, U32{0}, start) +
         Bytes(U32{40}, width, height, U16{1}, bits, compression, U32{0}, U32{0}, U32{0}, colours, U32{0});
}

string Rle() {
  string rows;
  for (int y = 0; y < kSampleHeight; ++y)
    rows += Bytes(U8{kSampleWidth / 2}, U8{0}, U8{kSampleWidth / 2}, U8{1}, U16{0});
  return BmpHead(kSampleWidth, kSampleHeight, 8, 1, 2) + Bytes(U32{0xFF0000}, U32{0x0000FF}) + rows +
         Bytes(U16{0x0100});
}

// A frame of a gif whose codes are all of 3 bits: the table is cleared before it grows beyond that.
string GifFrame(const std::vector<U8>& pixels) {
  std::vector<U8> codes;
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    if (i % 2 == 0) codes.push_back(4);  // clear
    codes.push_back(pixels[i]);
  }
  codes.push_back(5);  // end
  string packed((codes.size() * 3 + 7) / 8, '\0');
  for (std::size_t i = 0; i < codes.size() * 3; ++i) {
    if ((codes[i / 3] >> (i % 3) & 1) != 0) packed[i / 8] = static_cast<char>(packed[i / 8] | 1 << (i % 8));
  }
  string frame = "," + Bytes(U16{0}, U16{0}, U16{kSampleWidth}, U16{kSampleHeight}, U8{0}, U8{2});
  for (std::size_t at = 0; at < packed.size(); at += 255) {
    const string block = packed.substr(at, 255);
    frame += Bytes(static_cast<U8>(block.size())) + block;
  }
  return frame + '\0';
}

string WmfRecord(U16 function, const string& words) {
  return Bytes(static_cast<U32>(3 + words.size() / 2), function) + words;
}

string FilledBox(U16 brush, U32 colour, I16 left, I16 right) {
  return WmfRecord(0x2FC, Bytes(U16{0}, colour, U16{0})) + WmfRecord(0x12D, Bytes(brush)) +
         WmfRecord(0x41B, Bytes(I16{kSampleHeight}, right, I16{0}, left));
}

string WmfText(const string& letters) {
  const string font = Bytes(I16{-10}, I16{0}, I16{0}, I16{0}, I16{400}) + string(8, '\0') + string("Arial\0", 6);
  return WmfRecord(0x2FB, font) + WmfRecord(0x12D, Bytes(U16{3})) +
         WmfRecord(0x521, Bytes(U16{4}) + letters + Bytes(I16{5}, I16{2}));
}

// A red and a blue pixel on the left half.
string WmfImage() {
  const string bitmap =
      Bytes(U32{40}, I32{2}, I32{1}, U16{1}, U16{24}, U32{0}, U32{8}, U32{0}, U32{0}, U32{0}, U32{0}) +
      Bytes(U8{0}, U8{0}, U8{255}, U8{255}, U16{0}, U16{0});
  const string places =
      Bytes(I16{1}, I16{2}, I16{0}, I16{0}, I16{kSampleHeight}, I16{kSampleWidth / 2}, I16{0}, I16{0});
  return WmfRecord(0xF43, Bytes(U32{0xCC0020}, U16{0}) + places + bitmap);
}

string WmfOf(const string& more) {
  const string records = WmfRecord(0x103, Bytes(U16{8})) + WmfRecord(0x20B, Bytes(U16{0}, U16{0})) +
                         WmfRecord(0x20C, Bytes(I16{kSampleHeight}, I16{kSampleWidth})) +
                         WmfRecord(0x2FA, Bytes(U16{5}, U32{0}, U32{0})) + WmfRecord(0x12D, Bytes(U16{0})) +
                         FilledBox(1, 0x0000FF, 0, kSampleWidth / 2) +
                         FilledBox(2, 0xFF0000, kSampleWidth / 2, kSampleWidth) + more + WmfRecord(0, "");
  return Bytes(U16{1}, U16{9}, U16{0x300}, static_cast<U32>(9 + records.size() / 2), U16{4}, U32{64}, U16{0}) + records;
}

// In front of a metafile: its box, and 96 units an inch.
string Placed(const string& wmf) {
  string head = Bytes(U32{0x9AC6CDD7}, U16{0}, I16{0}, I16{0}, I16{kSampleWidth}, I16{kSampleHeight}, U16{96}, U32{0});
  U16 sum = 0;
  for (std::size_t at = 0; at < head.size(); at += 2) {
    U16 word = 0;
    std::memcpy(&word, head.data() + at, 2);
    sum = static_cast<U16>(sum ^ word);
  }
  return head + Bytes(sum) + wmf;
}

string EmfRecord(U32 type, const string& bytes) { return Bytes(type, static_cast<U32>(8 + bytes.size())) + bytes; }

string EmfBox(U32 brush, U32 colour, I32 left, I32 right) {
  return EmfRecord(39, Bytes(brush, U32{0}, colour, U32{0})) + EmfRecord(37, Bytes(brush)) +
         EmfRecord(43, Bytes(left, I32{0}, right, I32{kSampleHeight}));
}

string Cursor() {
  string bytes = IconOf({TwoHalves(kSampleWidth, kSampleHeight)});
  bytes[2] = 2;
  bytes.replace(10, 4, Bytes(U16{3}, U16{4}));  // the hot spot
  return bytes;
}

}  // namespace

QImage TwoHalves(int width, int height) {
  QImage picture(width, height, QImage::Format_ARGB32);
  picture.fill(qRgb(255, 0, 0));
  QPainter(&picture).fillRect(width / 2, 0, width - width / 2, height, QColor(0, 0, 255));
  return picture;
}

string Written(const QImage& picture, const char* format) {
  QBuffer buffer;
  QImageWriter writer(&buffer, format);
  if (!writer.write(picture)) throw std::runtime_error(format);
  return buffer.data().toStdString();
}

string TurnedJpg(int width, int height, U16 orientation) {
  const string tiff = string("II*\0", 4) + Bytes(U32{8}, U16{1}, U16{0x112}, U16{3}, U32{1}, U32{orientation}, U32{0});
  const string exif = string("Exif\0\0", 6) + tiff;
  const auto length = static_cast<U16>(exif.size() + 2);
  string bytes = Written(TwoHalves(width, height), "jpg");
  bytes.insert(2, "\xFF\xE1" + Bytes(static_cast<U8>(length >> 8), static_cast<U8>(length & 255)) + exif);
  return bytes;
}

// Qt writes icons of one picture: a head of 6 bytes, an entry of 16 and the picture.
string IconOf(const std::vector<QImage>& pictures) {
  string entries = Bytes(U16{0}, U16{1}, static_cast<U16>(pictures.size()));
  string data;
  for (const QImage& picture : pictures) {
    const string icon = Written(picture, "ico");
    entries += icon.substr(6, 12) + Bytes(static_cast<U32>(6 + pictures.size() * 16 + data.size()));
    data += icon.substr(22);
  }
  return entries + data;
}

string GifHeader(U16 width, U16 height) {
  return "GIF89a" + Bytes(width, height, U8{0xF1}, U8{0}, U8{0}) +
         string("\xFF\0\0\0\0\xFF\0\xFF\0\xFF\xFF\xFF", 12);  // red, blue, green, white
}

string Gif() {
  std::vector<U8> halves;
  for (int i = 0; i < kSampleWidth * kSampleHeight; ++i) halves.push_back(i % kSampleWidth < kSampleWidth / 2 ? 0 : 1);
  return GifHeader(kSampleWidth, kSampleHeight) + GifFrame(halves) + GifFrame(std::vector<U8>(halves.size(), 2)) + ";";
}

string BmpHeader(I32 width, I32 height) { return BmpHead(width, height, 24, 0, 0); }

string RunLengthBmp(I32 width, I32 height) {
  return BmpHead(width, height, 8, 1, 2) + Bytes(U32{0xFF0000}, U32{0x0000FF}, U16{0x0100});
}

string Wmf() { return Placed(WmfOf("")); }
string BareWmf() { return WmfOf(""); }
string WmfWithImage() { return Placed(WmfOf(WmfImage())); }
string WmfWithText(const string& letters) { return Placed(WmfOf(WmfText(letters))); }

string Emf() {
  const string records = EmfRecord(37, Bytes(U32{0x80000008})) +  // no outlines
                         EmfBox(1, 0x0000FF, 0, kSampleWidth / 2) +
                         EmfBox(2, 0xFF0000, kSampleWidth / 2, kSampleWidth) +
                         EmfRecord(14, Bytes(U32{0}, U32{0}, U32{20}));
  const string head = Bytes(I32{0}, I32{0}, I32{kSampleWidth}, I32{kSampleHeight}) +
                      Bytes(I32{0}, I32{0}, I32{1058}, I32{529}) +  // hundredths of a millimetre
                      " EMF" + Bytes(U32{0x10000}, static_cast<U32>(108 + records.size()), U32{9}, U16{3}, U16{0}) +
                      Bytes(U32{0}, U32{0}, U32{0}, I32{1024}, I32{768}, I32{271}, I32{203}) +
                      Bytes(U32{0}, U32{0}, U32{0}, U32{271000}, U32{203000});
  return EmfRecord(1, head) + records;
}

std::vector<Sample> AllSamples() {
  const QImage halves = TwoHalves(kSampleWidth, kSampleHeight);
  const QRgb red = qRgb(255, 0, 0);
  const QRgb nearlyRed = qRgb(254, 0, 0);
  return {{"jpeg", TurnedJpg(kSampleWidth, kSampleHeight, 1), nearlyRed},
          {"jpg", Written(halves, "jpg"), nearlyRed},
          {"gif", Gif(), red},
          {"bmp", Written(halves, "bmp"), red},
          {"ico", IconOf({halves}), red},
          {"rle", Rle(), red},
          {"cur", Cursor(), red},
          {"wmf", Wmf(), red},
          {"emf", Emf(), red}};
}

}  // namespace tresmor
