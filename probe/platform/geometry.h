#pragma once

namespace tarnix::platform {

/// All in device-independent pixels, in the one space that `Window` describes.
struct Point {
  double x = 0;
  double y = 0;

  bool operator==(const Point&) const = default;
};

struct Size {
  double width = 0;
  double height = 0;

  bool operator==(const Size&) const = default;
};

struct Rect {
  Point origin;
  Size size;

  double minX() const { return origin.x; }
  double minY() const { return origin.y; }
  double midX() const { return origin.x + size.width / 2; }
  double midY() const { return origin.y + size.height / 2; }

  bool operator==(const Rect&) const = default;
};

}  // namespace tarnix::platform
