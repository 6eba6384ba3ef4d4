#include "qt/display_text.h"

#include <QFontMetrics>
#include <QStringDecoder>
#include <QToolTip>
#include <cstdint>

#include "base/text.h"

namespace tresmor {
namespace {

constexpr char16_t kEscapes = 0xDC00;
constexpr char16_t kControlPictures = 0x2400;
constexpr char16_t kDeletePicture = 0x2421;

bool IsControl(char16_t unit) { return unit < 0x20 || unit == 0x7f; }
char16_t Escaped(unsigned char byte) { return static_cast<char16_t>(kEscapes + byte); }
char16_t ControlPicture(char16_t unit) {
  return unit == 0x7f ? kDeletePicture : static_cast<char16_t>(kControlPictures + unit);
}

// Of one character.
struct Decoded {
  QString text;
  bool valid = false;
};

// U+FEFF is a character like others here, wherever it stands.
Decoded DecodeCharacter(std::string_view bytes) {
  QStringDecoder decode(QStringDecoder::Utf8,
                        QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
  const QString text = decode(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
  return {text, !decode.hasError()};
}

// How many bytes from here on are one character of UTF-8 that can be shown, 0 if they are none.
std::size_t CharacterLength(std::string_view bytes) {
  const auto lead = static_cast<unsigned char>(bytes.front());
  const std::size_t length = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
  if (length > bytes.size()) return 0;
  if (length <= 1) return length;
  const Decoded character = DecodeCharacter(bytes.substr(0, length));
  const bool isReplaced =
      character.text.contains(QChar(QChar::ReplacementCharacter)) && bytes.substr(0, length) != "\xEF\xBF\xBD";
  return character.valid && !isReplaced && !CommandsText(bytes.substr(0, length)) ? length : 0;
}

// Appends each character as `control` or `invalid` gives it, or as it is.
template <class Control, class Invalid>
QString Decode(std::string_view bytes, Control&& control, Invalid&& invalid) {
  QString text;
  text.reserve(static_cast<qsizetype>(bytes.size()));
  while (!bytes.empty()) {
    const std::size_t length = CharacterLength(bytes);
    const auto lead = static_cast<unsigned char>(bytes.front());
    if (length == 0) {
      text += QChar(invalid(lead));
    } else if (length == 1) {
      text += QChar(IsControl(lead) ? control(lead) : static_cast<char16_t>(lead));
    } else {
      text += DecodeCharacter(bytes.substr(0, length)).text;
    }
    bytes.remove_prefix(length == 0 ? 1 : length);
  }
  return text;
}

char16_t Replacement(unsigned char) { return QChar::ReplacementCharacter; }

}  // namespace

QString EditText(std::string_view bytes) { return Decode(bytes, Escaped, Escaped); }

std::string EditedBytes(const QString& text) {
  std::string bytes;
  for (qsizetype at = 0; at < text.size(); ++at) {
    const char16_t unit = text[at].unicode();
    if (unit >= kEscapes && unit < kEscapes + 0x100) {
      bytes += static_cast<char>(unit - kEscapes);
      continue;
    }
    const qsizetype length =
        text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate() ? 2 : 1;
    bytes += text.mid(at, length).toStdString();
    at += length - 1;
  }
  return bytes;
}

QString ShownLine(std::string_view bytes) { return Decode(bytes, ControlPicture, Replacement); }

namespace {

QString Lines(std::string_view bytes, std::string_view lineEnd) {
  QString lines;
  for (;;) {
    const std::size_t end = bytes.find(lineEnd);
    std::string_view line = bytes.substr(0, end);
    if (end != std::string_view::npos && lineEnd == "\n" && line.ends_with('\r')) line.remove_suffix(1);
    lines += ShownLine(line);
    if (end == std::string_view::npos) return lines;
    lines += QChar('\n');
    bytes.remove_prefix(end + lineEnd.size());
  }
}

}  // namespace

QString ShownLines(std::string_view bytes) { return Lines(bytes, "\n"); }

QString ShownCaption(std::string_view bytes) { return Lines(bytes, "\r\n"); }

QString Breakable(const QString& text, int mostTogether) {
  QString breakable;
  int together = 0;
  for (qsizetype at = 0; at < text.size(); ++at) {
    const QChar unit = text[at];
    // In front of digits and of most signs a line doesn't break.
    const bool isLetterNext = at + 1 < text.size() && text[at + 1].isLetter();
    const bool breaks = unit == ' ' || (isLetterNext && (unit == '/' || unit == '-'));
    if (!breaks && together >= mostTogether && !unit.isLowSurrogate() && !unit.isMark()) {
      breakable += QChar(0x200B);
      together = 0;
    }
    together = breaks ? 0 : together + 1;
    breakable += unit;
  }
  return breakable;
}

QString PlainToolTip(std::string_view bytes) {
  if (bytes.empty()) return {};
  constexpr int kMostTogether = 30;
  const QString lines = Breakable(ShownLines(bytes), kMostTogether);
  const QString text = lines.toHtmlEscaped().replace('\n', "<br>");
  const int width = QFontMetrics(QToolTip::font()).size(0, lines).width();
  if (width <= kToolTipPixels) return "<qt><div style='white-space:pre'>" + text + "</div></qt>";
  return QString("<qt><table width=%1><tr><td style='white-space:pre-wrap'>%2</td></tr></table></qt>")
      .arg(kToolTipPixels)
      .arg(text);
}

}  // namespace tresmor
