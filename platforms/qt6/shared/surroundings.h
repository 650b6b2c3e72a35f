#pragma once

#include <QPointF>
#include <QRectF>
#include <QRegion>
#include <memory>
#include <optional>

#include "platforms/qt6/shared/spoken_text.h"

namespace tarnix::qt6 {

/// What a view has from the views and windows around it. "Screen" is the space that
/// `platform::Window` describes: the key window's.
struct Surroundings {
  /// Where the top-left corner of the window or scene stands on the screen.
  QPointF origin;
  /// The product of all opacities from the window down.
  double opacity = 1;
  /// What can be seen of this place, on the screen; absent inside a scrolling container, whose
  /// content counts as a whole.
  std::optional<QRectF> clip;
  /// What opaque things in front hide, on the screen.
  QRegion covered;
  /// Where content that counts as a whole is really shown: nothing hides it elsewhere.
  std::optional<QRectF> scroller;
  /// What the elements around say; null when there is none.
  std::shared_ptr<const SpokenText> spoken;
  /// Whether an element around is one control to people, whatever it is made of: what a spin box
  /// or combo box is built from are no fields of their own.
  bool insideCompositeControl = false;
  /// Whether the texts of this place are titles of rows or columns.
  bool insideHeader = false;

  /// With `clip` narrowed to `area`, given on the screen.
  Surroundings clippedTo(const QRectF& area) const {
    Surroundings result = *this;
    result.clip = clip ? clip->intersected(area) : area;
    return result;
  }

  /// For the content of a scrolling container at `area`.
  Surroundings unclippedIn(const QRectF& area) const;

  /// What of `area` is inside everything that clips it.
  QRectF shownPart(const QRectF& area) const;

  /// Something opaque stands in front.
  void cover(const QRegion& region);

  /// What can be seen of `area`; empty when that is nothing, or a sliver that tells nothing.
  QRectF visiblePart(const QRectF& area) const;
};

/// Below this a thing is taken for invisible.
inline constexpr double smallestVisibleOpacity = 0.01;

}  // namespace tarnix::qt6
