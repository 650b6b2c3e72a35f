#include "platforms/qt6/widgets/graphics_figures.h"

#include <QGraphicsPixmapItem>
#include <QGraphicsProxyWidget>
#include <QGraphicsSimpleTextItem>
#include <QGraphicsTextItem>
#include <QGraphicsView>
#include <QTextDocument>
#include <algorithm>

#include "platforms/qt6/shared/surroundings.h"
#include "platforms/qt6/shared/visible_text.h"
#include "platforms/qt6/widgets/graphics_press.h"
#include "platforms/qt6/widgets/own_handlers.h"

namespace tarnix::qt6 {

namespace {

namespace traits = platform::accessibility_traits;

// Scenes of more are maps or drawings, of which nobody reads every mark.
constexpr std::size_t mostFigures = 10'000;

QString textOf(const QGraphicsItem& item) {
  // Told by what they are made of: an application's own classes have numbers of their own for their
  // type.
  if (const auto* const simple = dynamic_cast<const QGraphicsSimpleTextItem*>(&item)) {
    return simple->text();
  }
  if (const auto* const text = dynamic_cast<const QGraphicsTextItem*>(&item)) {
    return beginningOf(*text->document());
  }
  return {};
}

platform::AccessibilityTraits kindOf(const QGraphicsItem& item, bool isText) {
  const auto* const text = dynamic_cast<const QGraphicsTextItem*>(&item);
  if (text != nullptr && text->textInteractionFlags().testFlag(Qt::TextEditable)) {
    return traits::none;
  }
  if (reactsToPress(item) && hasOwnPressHandler(item)) {
    return traits::button;
  }
  if (isText) {
    return traits::staticText;
  }
  return dynamic_cast<const QGraphicsPixmapItem*>(&item) == nullptr ? traits::none : traits::image;
}

}  // namespace

std::vector<PlainItem::Description> visibleFigures(const QGraphicsView& view) {
  std::vector<PlainItem::Description> figures;
  const QWidget& viewport = *view.viewport();
  if (view.scene() == nullptr || !viewport.isVisible()) {
    return figures;
  }
  const QRectF visible(viewport.rect());
  const QTransform toViewport = view.viewportTransform();
  // Back to front: the order of their being read is that of their being put together.
  for (const QGraphicsItem* item : view.items(viewport.rect(), Qt::IntersectsItemBoundingRect)) {
    if (figures.size() >= mostFigures) {
      break;
    }
    if (dynamic_cast<const QGraphicsProxyWidget*>(item) != nullptr ||
        item->effectiveOpacity() < smallestVisibleOpacity) {
      continue;
    }
    const QString text = textOf(*item);
    const bool isText = !text.trimmed().isEmpty();
    PlainItem::Description figure;
    figure.label = isText ? text : plainText(item->toolTip());
    if (figure.label.trimmed().isEmpty()) {
      continue;
    }
    QRectF area = item->deviceTransform(toViewport).mapRect(item->boundingRect());
    if (item->isClipped()) {
      area &= item->deviceTransform(toViewport).mapRect(item->clipPath().boundingRect());
    }
    figure.traits = kindOf(*item, isText);
    if (!item->isEnabled()) {
      figure.traits |= traits::notEnabled;
    }
    figure.area = area.intersected(visible).translated(viewport.pos());
    if (item->isSelected()) {
      figure.traits |= traits::selected;
    }
    figures.push_back(std::move(figure));
  }
  std::reverse(figures.begin(), figures.end());
  return figures;
}

}  // namespace tarnix::qt6
