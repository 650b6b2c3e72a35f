#include "platforms/qt6/quick/item_touch.h"

#include <QQuickWindow>
#include <utility>
#include <vector>

#include "platforms/qt6/quick/item_press.h"
#include "platforms/qt6/quick/item_responder.h"
#include "platforms/qt6/quick/scene.h"
#include "platforms/qt6/shared/touched_view.h"

namespace tarnix::qt6 {

namespace {

/// From the outermost item to `item`.
std::vector<QQuickItem*> pathTo(QQuickItem& item) {
  std::vector<QQuickItem*> path;
  for (QQuickItem* step = &item; step != nullptr; step = step->parentItem()) {
    path.insert(path.begin(), step);
  }
  return path;
}

}  // namespace

std::shared_ptr<platform::View> touchedItem(QQuickWindow& window, const Surroundings& surroundings,
                                            QPointF point, std::shared_ptr<platform::View> outer) {
  const QPointF scenePoint = point - surroundings.origin;
  QQuickItem* const root = window.contentItem();
  if (root == nullptr || !QRectF(QPointF(), window.size()).contains(scenePoint)) {
    return nullptr;
  }
  const Press press = pressAt(*root, scenePoint);
  if (press.item == nullptr) {
    return nullptr;
  }
  std::shared_ptr<platform::View> result = std::move(outer);
  // Thousands of items may lie beside the few that the touch goes through.
  for (const std::shared_ptr<SceneItemView>& view :
       Scene::viewsAlong(pathTo(*press.item), window.size(), surroundings)) {
    QQuickItem& item = *view->item();
    const Press::Effect effect = &item == press.item ? press.effect : Press::Effect::none;
    result = std::make_shared<TouchedView>(
        view, std::move(result), std::make_shared<ItemResponder>(item, scenePoint, effect));
  }
  return result;
}

}  // namespace tarnix::qt6
