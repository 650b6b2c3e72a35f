#include "platforms/qt6/widgets/label_nearby.h"

#include <QLabel>
#include <QWidget>

#include "platforms/qt6/shared/label_beside.h"
#include "platforms/qt6/widgets/widget_label.h"

namespace tarnix::qt6 {

QString labelNearby(const QWidget& field) {
  const QWidget* const container = field.parentWidget();
  if (container == nullptr || field.isWindow() || container->children().size() > mostThingsAround) {
    return {};
  }
  const QLabel* nearest = nullptr;
  double shortest = 0;
  for (const QObject* child : container->children()) {
    const auto* const label = qobject_cast<const QLabel*>(child);
    if (label == nullptr || label->buddy() != nullptr || !label->isVisible()) {
      continue;
    }
    const double distance =
        distanceOfLabel(label->geometry(), field.geometry(), field.layoutDirection());
    if (distance >= 0 && (nearest == nullptr || distance < shortest)) {
      nearest = label;
      shortest = distance;
    }
  }
  return nearest == nullptr ? QString() : textOfLabel(*nearest).text;
}

}  // namespace tarnix::qt6
