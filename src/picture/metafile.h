// Metafiles are programs that draw. They are turned into SVG, which is then painted at the size that is wanted.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>

namespace tresmor {

// Empty for what is no metafile of the kind. The libraries behind them are old and trust their input: only a process
// that may crash should call these.
QByteArray SvgOfWmf(QByteArray bytes);
QByteArray SvgOfEmf(QByteArray bytes);

// A drawing at its own size, or fit into `bounds` if that is larger; transparent where nothing is drawn. Null for what
// is no SVG. Needs no display, and no application object: it makes one, so there must be none.
QImage PaintSvg(const QByteArray& svg, QSize bounds);

}  // namespace tresmor
