#include "picture/read_picture.h"

#include <QFile>
#include <QImageReader>
#include <algorithm>

#include "picture/metafile.h"
#include "platform/posix/regular_file.h"

namespace tresmor {

namespace {

constexpr qint64 kLongestMetafile = 64 << 20;  // bytes; these are read as a whole, larger ones not at all

struct Format {
  qint64 offset;
  QByteArrayView mark;                    // what stands there in every file of the format
  const char* reader;                     // Qt's name of the format, null for metafiles
  QByteArray (*toSvg)(QByteArray bytes);  // for metafiles
};
constexpr Format kFormats[] = {
    {0, "\xFF\xD8\xFF", "jpeg", nullptr},
    {0, "GIF8", "gif", nullptr},
    {0, "BM", "bmp", nullptr},
    {0, QByteArrayView("\0\0\1\0", 4), "ico", nullptr},
    {0, QByteArrayView("\0\0\2\0", 4), "cur", nullptr},
    {0, "\xD7\xCD\xC6\x9A", nullptr, SvgOfWmf},
    {0, QByteArrayView("\1\0\x09\0", 4), nullptr, SvgOfWmf},
    {0, QByteArrayView("\2\0\x09\0", 4), nullptr, SvgOfWmf},
    {40, " EMF", nullptr, SvgOfEmf},
};

const Format* FormatOf(const QByteArray& head) {
  const auto fits = [&](const Format& format) {
    return QByteArrayView(head).sliced(std::min<qint64>(format.offset, head.size())).startsWith(format.mark);
  };
  const auto* const found = std::ranges::find_if(kFormats, fits);
  return found != std::end(kFormats) ? found : nullptr;
}

qint64 PixelsOf(QSize size) { return static_cast<qint64>(size.width()) * size.height(); }

void GoToLargest(QImageReader& reader) {
  int largest = 0;
  qint64 most = 0;
  for (int i = 0; i < reader.imageCount() && reader.jumpToImage(i); ++i) {
    const qint64 pixels = PixelsOf(reader.size());
    if (pixels > most) largest = i;
    most = std::max(most, pixels);
  }
  reader.jumpToImage(largest);
}

QImage ReadImage(QIODevice& file, const char* format, QSize bounds) {
  QImageReader reader(&file, format);
  reader.setAutoDetectImageFormat(false);
  reader.setAutoTransform(true);
  QImageReader::setAllocationLimit(kMostPixels / (1 << 20) * 4);  // megabytes
  if (reader.imageCount() > 1 && !reader.supportsAnimation()) GoToLargest(reader);
  const QSize size = reader.size();
  if (size.isEmpty()) return {};
  // Turning comes after scaling.
  if (reader.transformation() & QImageIOHandler::TransformationRotate90) bounds.transpose();
  reader.setScaledSize(FitInto(size, bounds));
  return reader.read();
}

}  // namespace

QSize FitInto(QSize size, QSize bounds) {
  if (size.width() > bounds.width() || size.height() > bounds.height()) size.scale(bounds, Qt::KeepAspectRatio);
  return size.expandedTo({1, 1});
}

QImage ReadPicture(const std::string& path, QSize bounds) {
  struct stat info {};
  Errors failure = Errors::None;
  const Descriptor opened = OpenRegularFile(ResolveLinks(path), info, failure);
  QFile file;
  if (!opened.IsOpen() || !file.open(opened.Number(), QIODevice::ReadOnly)) return {};
  const Format* const format = FormatOf(file.peek(64));
  if (format == nullptr) return {};
  if (format->toSvg != nullptr && file.size() > kLongestMetafile) return {};
  QImage picture = format->toSvg == nullptr ? ReadImage(file, format->reader, bounds)
                                            : PaintSvg(format->toSvg(file.readAll()), bounds);
  return std::move(picture).convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

}  // namespace tresmor
