// Bytes of the program and texts of the toolkit. Names of files may hold any byte but NUL; texts are UTF-16.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace tresmor {

// For fields that are typed in: EditedBytes(EditText(b)) is b, whatever b holds. What isn't UTF-8, and characters that
// command text, stand as lone low surrogates, which no keyboard types.
QString EditText(std::string_view bytes);
std::string EditedBytes(const QString& text);

// For what only shows, on one line and in its own order: control characters of ASCII by their pictures, others that
// command text, and what isn't UTF-8, by replacement characters, one a byte.
QString ShownLine(std::string_view bytes);
// The same with line ends, CR LF or LF, left as such.
QString ShownLines(std::string_view bytes);
// The same for captions of forms, whose lines end by CR LF: a lone LF belongs to a file's name.
QString ShownCaption(std::string_view bytes);

// With places to break, which don't show, wherever more characters than that would else stay together.
QString Breakable(const QString& text, int mostTogether);

// How long hover help stays, and how wide it gets before it wraps.
inline constexpr int kToolTipMilliseconds = 20000;
inline constexpr int kToolTipPixels = 360;
// A text for hover help, which never takes it for markup.
QString PlainToolTip(std::string_view bytes);

}  // namespace tresmor
