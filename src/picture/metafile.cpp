#include "picture/metafile.h"

#include <emf2svg.h>
#include <libwmf/api.h>
#include <libwmf/svg.h>

#include <QGuiApplication>
#include <QPainter>
#include <QRegularExpression>
#include <QSvgRenderer>
#include <QtEndian>
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <utility>

#include "picture/read_picture.h"

namespace tresmor {

namespace {

constexpr double kDotsPerInch = 96;
constexpr unsigned long kWmfFlags = WMF_OPT_FUNCTION | WMF_OPT_IGNORE_NONFATAL | WMF_OPT_NO_ERROR | WMF_OPT_NO_DEBUG;

struct DestroyApi {
  void operator()(wmfAPI* api) const { wmf_api_destroy(api); }
};
struct FreeText {
  void operator()(char* text) const { std::free(text); }
};

constexpr qsizetype kPlaceHead = 22;  // in front of most wmf files
constexpr qsizetype kHead = 18;
constexpr qsizetype kShortestRecord = 6;

template <typename Number>
Number At(QByteArrayView bytes, qsizetype place) {
  return qFromLittleEndian<Number>(bytes.sliced(place, sizeof(Number)).data());
}

// Where the record stands that sets the size of a wmf's window, looked for from `record` on; near the end if there is
// none.
qsizetype FindWindow(QByteArrayView wmf, qsizetype record) {
  constexpr std::uint16_t kSetWindow = 0x20C;
  while (record + 10 <= wmf.size() && At<std::uint16_t>(wmf, record + 4) != kSetWindow) {
    record += std::max<qsizetype>(2 * qsizetype{At<std::uint32_t>(wmf, record)}, kShortestRecord);
  }
  return record;
}

// The library draws a window on a square unless the metafile says otherwise, which may come behind this: a record that
// gives the picture the window's shape.
QByteArray InShapeOfWindow(QByteArray wmf) {
  const qsizetype head = wmf.startsWith("\xD7\xCD") ? kPlaceHead : 0;
  const qsizetype window = FindWindow(wmf, head + kHead);
  if (window + 10 > wmf.size()) return wmf;
  const auto height = static_cast<std::int16_t>(std::abs(At<std::int16_t>(wmf, window + 6)));
  const auto width = static_cast<std::int16_t>(std::abs(At<std::int16_t>(wmf, window + 8)));
  if (width <= 0 || height <= 0) return wmf;
  QByteArray record("\5\0\0\0\x0E\2....", 10);
  qToLittleEndian(height, record.data() + 6);
  qToLittleEndian(width, record.data() + 8);
  qToLittleEndian(At<std::uint32_t>(wmf, head + 6) + 5, wmf.data() + head + 6);  // the length in words
  return wmf.insert(head + kHead, record);
}

// `pixels` is the size of the drawing if its shape is left aside; `box` what is drawn, with half a unit around it.
QSize SizeOf(const wmfD_Rect& box, QSizeF pixels) {
  const QSizeF drawn(box.BR.x - box.TL.x - 1, box.BR.y - box.TL.y - 1);
  return drawn.expandedTo({1, 1}).scaled(pixels, Qt::KeepAspectRatio).toSize().expandedTo({1, 1});
}

// Plays the metafile that is open in `api` to its output.
bool Play(wmfAPI* api) {
  wmfD_Rect box{};
  wmf_svg_t* const device = WMF_SVG_GetData(api);
  if (wmf_scan(api, 0, &box) != wmf_E_None) return false;
  if (wmf_display_size(api, &device->width, &device->height, kDotsPerInch, kDotsPerInch) != wmf_E_None) return false;
  const QSize size = SizeOf(box, QSizeF(device->width, device->height));
  device->width = static_cast<unsigned>(size.width());
  device->height = static_cast<unsigned>(size.height());
  device->bbox = box;
  device->flags |= WMF_SVG_INLINE_IMAGES;
  device->out = wmf_stream_create(api, nullptr);
  return device->out != nullptr && wmf_play(api, 0, &box) == wmf_E_None;
}

// The library's text mended: it is in Latin-1 and scales images twice, once by their sizes and once more.
QByteArray MendSvg(QByteArrayView svg) {
  static const QRegularExpression scaling(R"((<image[^>]*?)transform="[^"]*")");
  return QString::fromLatin1(svg).replace(scaling, "\\1").toUtf8();
}

}  // namespace

QByteArray SvgOfWmf(QByteArray bytes) {
  if (bytes.size() < kPlaceHead + kHead) return {};
  bytes = InShapeOfWindow(std::move(bytes));
  wmfAPI_Options options{};
  options.function = wmf_svg_function;
  wmfAPI* created = nullptr;
  if (wmf_api_create(&created, kWmfFlags, &options) != wmf_E_None) return {};
  const std::unique_ptr<wmfAPI, DestroyApi> api(created);
  if (wmf_mem_open(created, reinterpret_cast<unsigned char*>(bytes.data()), bytes.size()) != wmf_E_None) return {};
  if (!Play(created)) return {};
  char* text = nullptr;
  unsigned long length = 0;
  wmf_stream_destroy(created, WMF_SVG_GetData(created)->out, &text, &length);  // the text goes with `api`
  return MendSvg(QByteArrayView(text, static_cast<qsizetype>(length)));
}

QByteArray SvgOfEmf(QByteArray bytes) {
  generatorOptions options{};
  options.svgDelimiter = true;
  char* text = nullptr;
  std::size_t length = 0;
  const int done = emf2svg(bytes.data(), static_cast<std::size_t>(bytes.size()), &text, &length, &options);
  const std::unique_ptr<char, FreeText> kept(text);
  return done != 0 && text != nullptr ? QByteArray(text, static_cast<qsizetype>(length)) : QByteArray();
}

QImage PaintSvg(const QByteArray& svg, QSize bounds) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qunsetenv("QT_QPA_PLATFORMTHEME");  // a desktop's theme has no say in a picture
  int argc = 1;
  char name[] = "tresmor-picture";
  char* argv[] = {name, nullptr};
  const QGuiApplication application(argc, argv);
  QSvgRenderer renderer(svg);
  if (!renderer.isValid() || renderer.defaultSize().isEmpty()) return {};
  QImage picture(FitInto(renderer.defaultSize(), bounds), QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  renderer.setAspectRatioMode(Qt::IgnoreAspectRatio);
  renderer.render(&painter);
  return picture;
}

}  // namespace tresmor
