#include "platforms/qt6/shared/figure_painter.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>
#include <QTransform>
#include <cmath>

#include "platforms/qt6/shared/frame.h"
#include "platforms/qt6/shared/out_of_focus.h"

namespace tarnix::qt6 {

namespace {

// Hardly any desktop has a font with this character.
constexpr QChar hourglassCharacter(0x29D6);
constexpr std::string_view hourglass = "\u29D6";

QColor toColor(const platform::Color& color) {
  return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                          static_cast<float>(color.blue), static_cast<float>(color.alpha));
}

QTransform toTransform(const platform::Transform& transform) {
  return {transform.scale, 0, 0, transform.scale, transform.translation.x, transform.translation.y};
}

QFont toFont(const platform::Font& font) {
  QFont result = QFontDatabase::systemFont(font.isMonospaced ? QFontDatabase::FixedFont
                                                             : QFontDatabase::GeneralFont);
  result.setPixelSize(static_cast<int>(std::lround(font.size)));
  if (font.isMonospaced) {
    result.setWeight(QFont::Medium);
  }
  return result;
}

QPainterPath roundedPath(const QRectF& frame, double cornerRadius) {
  const double radius = std::min({cornerRadius, frame.width() / 2, frame.height() / 2});
  QPainterPath path;
  if (radius > 0) {
    path.addRoundedRect(frame, radius, radius);
  } else {
    path.addRect(frame);
  }
  return path;
}

/// Paints one command's shape in the shape's own coordinates.
class ShapePainter {
 public:
  ShapePainter(QPainter& painter, const platform::DrawingCommand& command) : painter_(painter) {
    if (command.clip) {
      const QTransform toShape =
          toTransform(command.clip->transform) * toTransform(command.transform).inverted();
      clip_ = toShape.map(roundedPath(rectOf(command.clip->frame), command.clip->cornerRadius));
    }
  }

  void operator()(const platform::RoundedRectangle& rectangle) const {
    const QRectF frame = rectOf(rectangle.frame);
    if (rectangle.shadow) {
      paintShadow(frame, rectangle);
    }
    if (rectangle.fill.alpha > 0) {
      fill(roundedPath(frame, rectangle.cornerRadius), toColor(rectangle.fill));
    }
    const double width = rectangle.borderWidth;
    if (width > 0) {
      QPainterPath ring = roundedPath(frame, rectangle.cornerRadius);
      ring.addPath(roundedPath(frame.adjusted(width, width, -width, -width),
                               std::max(rectangle.cornerRadius - width, 0.0)));
      ring.setFillRule(Qt::OddEvenFill);
      fill(ring, toColor(rectangle.borderColor));
    }
  }

  void operator()(const platform::TextLine& line) const {
    if (clip_) {
      painter_.setClipPath(*clip_);
    }
    const QFont font = toFont(line.font);
    const QRectF frame = rectOf(line.frame);
    if (line.text == hourglass && !QFontMetricsF(font).inFont(hourglassCharacter)) {
      paintHourglass(frame.center(), line.font.size, toColor(line.color));
      return;
    }
    painter_.setFont(font);
    painter_.setPen(toColor(line.color));
    // As the text itself reads, whichever way the host is laid out.
    painter_.setLayoutDirection(Qt::LayoutDirectionAuto);
    const bool isCentered = line.alignment == platform::TextLine::Alignment::centered;
    // Widths are not whole numbers: what was made to fit is not to be cut.
    const QString text = QFontMetricsF(font).elidedText(
        QString::fromUtf8(line.text.data(), static_cast<qsizetype>(line.text.size())),
        Qt::ElideRight, frame.width() + 0.5);
    painter_.drawText(
        frame,
        static_cast<int>(Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip |
                         (isCentered ? Qt::AlignHCenter : Qt::AlignLeft | Qt::AlignAbsolute)),
        text);
  }

  void operator()(const platform::Stroke& stroke) const {
    QPainterPath path;
    for (const std::vector<platform::Point>& line : stroke.lines) {
      for (std::size_t at = 0; at < line.size(); ++at) {
        const QPointF point(line[at].x, line[at].y);
        at == 0 ? path.moveTo(point) : path.lineTo(point);
      }
      // The toolkit draws no line that has no length.
      if (line.size() > 1 && line.front() == line.back()) {
        path.lineTo(line.front().x + 0.001, line.front().y);
      }
    }
    painter_.strokePath(path, QPen(toColor(stroke.color), stroke.width, Qt::SolidLine, Qt::RoundCap,
                                   Qt::RoundJoin));
  }

  void operator()(const platform::Backdrop& backdrop) const {
    const QPainterPath path = roundedPath(rectOf(backdrop.frame), 0);
    paintOutOfFocus(painter_, clip_ ? path.intersected(*clip_) : path, backdrop.radius);
    fill(path, toColor(backdrop.tint));
  }

  void operator()(const platform::HorizontalGradient& gradient) const {
    const QRectF frame = rectOf(gradient.frame);
    QLinearGradient brush(frame.topLeft(), frame.topRight());
    for (const platform::HorizontalGradient::Stop& stop : gradient.stops) {
      brush.setColorAt(stop.location, toColor(stop.color));
    }
    fill(roundedPath(frame, 0), brush);
  }

 private:
  void fill(const QPainterPath& path, const QBrush& brush) const {
    // Unlike a clip of the painter's the common area of two paths has smooth edges.
    painter_.fillPath(clip_ ? path.intersected(*clip_) : path, brush);
  }

  void paintHourglass(QPointF middle, double fontSize, const QColor& color) const {
    const double width = fontSize * 0.25;
    const double height = fontSize * 0.4;
    QPainterPath path;
    path.addPolygon(QPolygonF({middle + QPointF(-width, -height), middle + QPointF(width, -height),
                               middle + QPointF(-width, height), middle + QPointF(width, height)}));
    path.closeSubpath();
    painter_.strokePath(path,
                        QPen(color, fontSize / 12, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  }

  /// Rings around the shape, fainter outwards; what lies under the shape is left out, as a shadow
  /// of something translucent would be seen through it.
  void paintShadow(const QRectF& frame, const platform::RoundedRectangle& rectangle) const {
    const int steps = static_cast<int>(std::ceil(rectangle.shadow->radius));
    const auto around = [&](double distance) {
      return roundedPath(frame.adjusted(-distance, -distance, distance, distance),
                         rectangle.cornerRadius + distance);
    };
    for (int step = 0; step < steps; ++step) {
      const double height = 1 - (step + 0.5) / steps;
      QPainterPath ring = around(step + 1);
      ring.addPath(around(step));
      ring.setFillRule(Qt::OddEvenFill);
      QColor color = toColor(rectangle.shadow->color);
      color.setAlphaF(color.alphaF() * static_cast<float>(height * height * 0.5));
      fill(ring, color);
    }
  }

  QPainter& painter_;
  std::optional<QPainterPath> clip_;
};

struct ShapeBounds {
  QRectF operator()(const platform::RoundedRectangle& rectangle) const {
    const double reach = rectangle.shadow ? std::ceil(rectangle.shadow->radius) : 0;
    return rectOf(rectangle.frame).adjusted(-reach, -reach, reach, reach);
  }
  QRectF operator()(const platform::TextLine& line) const {
    // Accents and slanted letters reach out of their line.
    const double reach = line.font.size / 2;
    return rectOf(line.frame).adjusted(-reach, -reach, reach, reach);
  }
  QRectF operator()(const platform::Stroke& stroke) const {
    QRectF bounds;
    const double reach = stroke.width / 2 + 0.5;
    for (const std::vector<platform::Point>& line : stroke.lines) {
      for (const platform::Point& point : line) {
        bounds |= QRectF(point.x - reach, point.y - reach, 2 * reach, 2 * reach);
      }
    }
    return bounds;
  }
  QRectF operator()(const platform::HorizontalGradient& gradient) const {
    return rectOf(gradient.frame);
  }
  QRectF operator()(const platform::Backdrop& backdrop) const { return rectOf(backdrop.frame); }
};

}  // namespace

QRectF boundsOf(const platform::Figure& figure) {
  QRectF bounds;
  for (const platform::DrawingCommand& command : figure) {
    QRectF area = toTransform(command.transform).mapRect(std::visit(ShapeBounds(), command.shape));
    if (command.clip) {
      area &= toTransform(command.clip->transform).mapRect(rectOf(command.clip->frame));
    }
    bounds |= area;
  }
  return bounds;
}

void paintFigure(QPainter& painter, const platform::Figure& figure) {
  for (const platform::DrawingCommand& command : figure) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(command.opacity);
    painter.setTransform(toTransform(command.transform), true);
    std::visit(ShapePainter(painter, command), command.shape);
    painter.restore();
  }
}

platform::Size sizeOfText(std::string_view text, const platform::Font& font) {
  const QFontMetricsF metrics(toFont(font));
  return {std::ceil(metrics.horizontalAdvance(
              QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())))),
          std::ceil(metrics.height())};
}

}  // namespace tarnix::qt6
