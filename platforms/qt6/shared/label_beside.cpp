#include "platforms/qt6/shared/label_beside.h"

#include <algorithm>
#include <cmath>

namespace tarnix::qt6 {

namespace {

// In lines of the label's own height. What stands further off belongs to something else.
constexpr double widestGapBefore = 2;
constexpr double widestGapAbove = 0.75;
// Styles indent the text in a field, and frames are drawn outside of it.
constexpr double widestIndent = 12;
// A label in the line before is taken rather than one above.
constexpr double above = 1000;

}  // namespace

double distanceOfLabel(const QRectF& text, const QRectF& field, Qt::LayoutDirection direction) {
  constexpr double none = -1;
  if (text.isEmpty() || field.isEmpty()) {
    return none;
  }
  const bool rightToLeft = direction == Qt::RightToLeft;
  // A label that fills its cell may be as tall as the field; its own text is one line or a few.
  const double line = std::min(text.height(), 24.0);
  const double gapBefore = rightToLeft ? text.left() - field.right() : field.left() - text.right();
  const double middle = text.center().y();
  // The label of a tall field stands at its top or at its middle.
  const bool inLine = middle >= field.top() && middle <= field.bottom();
  // Frames may overlap by a pixel or two.
  if (inLine && gapBefore >= -2 && gapBefore <= widestGapBefore * line) {
    return std::max(0.0, gapBefore);
  }
  const double gapAbove = field.top() - text.bottom();
  const double indent = rightToLeft ? text.right() - field.right() : text.left() - field.left();
  if (gapAbove >= -2 && gapAbove <= widestGapAbove * line && std::abs(indent) <= widestIndent) {
    return above + std::max(0.0, gapAbove);
  }
  return none;
}

}  // namespace tarnix::qt6
