#include "platforms/qt6/quick/text_nearby.h"

#include <QGuiApplication>
#include <QQuickItem>

#include "platforms/qt6/quick/item_class.h"
#include "platforms/qt6/quick/item_description.h"
#include "platforms/qt6/shared/label_beside.h"
#include "platforms/qt6/shared/visible_text.h"

namespace tarnix::qt6 {

QString textNearby(const QQuickItem& field) {
  const QQuickItem* const container = field.parentItem();
  if (container == nullptr) {
    return {};
  }
  const QList<QQuickItem*> siblings = container->childItems();
  if (siblings.size() > mostThingsAround) {
    return {};
  }
  const QRectF area = field.mapRectToItem(container, QRectF(QPointF(), field.size()));
  QString nearest;
  double shortest = -1;
  for (const QQuickItem* sibling : siblings) {
    if (sibling == &field || !sibling->isVisible()) {
      continue;
    }
    const ItemClass& siblingClass = classOf(*sibling);
    if (siblingClass.kind != ItemKind::text) {
      continue;
    }
    // A label may be wider than its text; only the text is seen to stand beside the field.
    const QRectF shown = sibling->mapRectToItem(container, sibling->boundingRect());
    const double distance = distanceOfLabel(shown, area, QGuiApplication::layoutDirection());
    if (distance < 0 || (shortest >= 0 && distance >= shortest)) {
      continue;
    }
    const auto format = static_cast<TextFormat>(siblingClass.textFormat.integer(*sibling));
    const QString text = visibleText(siblingClass.text.string(*sibling), format).text;
    if (!text.trimmed().isEmpty()) {
      nearest = text;
      shortest = distance;
    }
  }
  return nearest;
}

}  // namespace tarnix::qt6
