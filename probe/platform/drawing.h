#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "probe/platform/geometry.h"

/// Pictures as flat lists of simple shapes. Lengths are device-independent pixels.
namespace tarnix::platform {

/// Each from 0 to 1; the colours are not multiplied with alpha.
struct Color {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 0;

  Color withAlpha(double newAlpha) const { return {red, green, blue, newAlpha}; }

  bool operator==(const Color&) const = default;
};

struct Font {
  double size = 0;
  bool isMonospaced = false;

  bool operator==(const Font&) const = default;
};

/// Scales around the origin, then moves.
struct Transform {
  double scale = 1;
  Point translation = {};

  Point apply(Point point) const {
    return {point.x * scale + translation.x, point.y * scale + translation.y};
  }
  /// What applies `this` first and `outer` then.
  Transform within(const Transform& outer) const {
    return {scale * outer.scale, outer.apply(translation)};
  }

  bool operator==(const Transform&) const = default;
};

/// A soft copy of the shape behind it, in one colour.
struct Shadow {
  Color color;
  /// How far it reaches beyond the shape.
  double radius = 0;

  bool operator==(const Shadow&) const = default;
};

/// A rectangle with round corners, filled; its border lies inside its frame.
struct RoundedRectangle {
  Rect frame = {};
  double cornerRadius = 0;
  Color fill = {};
  double borderWidth = 0;
  Color borderColor = {};
  std::optional<Shadow> shadow = std::nullopt;

  bool operator==(const RoundedRectangle&) const = default;
};

/// One line of text in the middle of a frame.
struct TextLine {
  enum class Alignment { leading, centered };

  Rect frame = {};
  /// UTF-8. What does not fit is cut off, marked by an ellipsis.
  std::string text = {};
  Font font = {};
  Color color = {};
  Alignment alignment = Alignment::centered;

  bool operator==(const TextLine&) const = default;
};

/// Straight lines from point to point, with round ends. Points that coincide are a dot.
struct Stroke {
  std::vector<std::vector<Point>> lines = {};
  double width = 1;
  Color color = {};

  bool operator==(const Stroke&) const = default;
};

/// Colours from the left edge to the right edge of a frame.
struct HorizontalGradient {
  struct Stop {
    /// From 0 at the left edge to 1 at the right edge, rising.
    double location = 0;
    Color color = {};

    bool operator==(const Stop&) const = default;
  };

  Rect frame = {};
  std::vector<Stop> stops = {};

  bool operator==(const HorizontalGradient&) const = default;
};

/// What lies behind a frame, out of focus, and a colour over it. The colour alone where the host's
/// picture cannot be had while it is being drawn.
struct Backdrop {
  Rect frame = {};
  /// How far one point of the picture spreads.
  double radius = 0;
  Color tint = {};

  bool operator==(const Backdrop&) const = default;
};

/// What lies outside is not drawn.
struct Clip {
  Transform transform = {};
  Rect frame = {};
  double cornerRadius = 0;

  bool operator==(const Clip&) const = default;
};

using Shape = std::variant<RoundedRectangle, TextLine, Stroke, HorizontalGradient, Backdrop>;

/// One shape, in place.
struct DrawingCommand {
  Shape shape;
  /// From the shape's own coordinates to those of the whole picture.
  Transform transform = {};
  double opacity = 1;
  std::optional<Clip> clip = std::nullopt;

  bool operator==(const DrawingCommand&) const = default;
};

/// Shapes that belong together, those in front last. Different figures rarely touch each other.
using Figure = std::vector<DrawingCommand>;

/// A picture: its figures, those in front last.
using DisplayList = std::vector<Figure>;

}  // namespace tarnix::platform
