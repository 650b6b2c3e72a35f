#pragma once

class QPainter;
class QPainterPath;

namespace tarnix::qt6 {

/// Blurs what has been painted so far inside `path`; `radius` is in the painter's coordinates.
/// Does nothing where the picture is not in memory, or not behind what is painted.
void paintOutOfFocus(QPainter& painter, const QPainterPath& path, double radius);

}  // namespace tarnix::qt6
