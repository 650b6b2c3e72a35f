#pragma once

#include <QRectF>

#include "probe/platform/drawing.h"

class QPainter;

namespace tarnix::qt6 {

/// Everything that `paintFigure` touches, in the figure's coordinates.
QRectF boundsOf(const platform::Figure& figure);

/// Paints with the painter's transform as it stands; leaves the painter as it was. Any thread that
/// may paint.
void paintFigure(QPainter& painter, const platform::Figure& figure);

/// What one line of text takes.
platform::Size sizeOfText(std::string_view text, const platform::Font& font);

}  // namespace tarnix::qt6
