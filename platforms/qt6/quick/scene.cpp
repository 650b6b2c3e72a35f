#include "platforms/qt6/quick/scene.h"

#include <QQuickItem>
#include <span>
#include <utility>

#include "platforms/qt6/quick/live_items.h"
#include "platforms/qt6/quick/paint_order.h"

namespace tarnix::qt6 {

namespace {

// Far below what the stack of a thread holds, far above what people build.
constexpr int deepest = 1'000;

}  // namespace

std::shared_ptr<platform::View> Scene::rootView(QQuickItem& root, QSizeF size,
                                                const Surroundings& surroundings) {
  const auto scene = std::make_shared<Scene>(size);
  const Surroundings& own = scene->surroundings_.emplace_back(surroundings);
  SceneItemView& view = scene->add(root, {nullptr, &own, own.spoken.get()}, 0);
  return {scene, &view};
}

std::vector<std::shared_ptr<SceneItemView>> Scene::viewsAlong(const std::vector<QQuickItem*>& path,
                                                              QSizeF size,
                                                              const Surroundings& surroundings) {
  const auto scene = std::make_shared<Scene>(size);
  const Surroundings& own = scene->surroundings_.emplace_back(surroundings);
  SceneItemView::Place place{nullptr, &own, own.spoken.get()};
  std::vector<std::shared_ptr<SceneItemView>> result;
  for (QQuickItem* item : path) {
    if (!result.empty()) {
      const SceneItemView& outer = *result.back();
      QList<QQuickItem*> shown = {item};
      removeUnusedItems(*outer.item(), outer.itemClass(), outer.place().parent, shown);
      if (shown.isEmpty()) {
        break;
      }
      place = scene->placeInside(outer, *outer.item());
    }
    const int depth = static_cast<int>(result.size());
    result.emplace_back(scene,
                        &scene->views_.emplace_back(*scene, *item, classOf(*item), place, depth));
  }
  return result;
}

SceneItemView& Scene::add(QQuickItem& item, const SceneItemView::Place& place, int depth) {
  SceneItemView& view = views_.emplace_back(*this, item, classOf(item), place, depth);
  if (item.isVisible()) {
    expand(view, depth);
  }
  return view;
}

void Scene::expand(SceneItemView& view, int depth) {
  QQuickItem* const item = view.item();
  if (item == nullptr || view.isExpanded() || depth > deepest) {
    return;
  }
  QList<QQuickItem*> inUse = inPaintOrder(*item);
  removeUnusedItems(*item, view.itemClass(), view.place().parent, inUse);
  // Constant, as the list is the item's own as long as nobody may change it.
  const QList<QQuickItem*> items = std::move(inUse);
  const std::span children(std::pmr::polymorphic_allocator<SceneItemView*>(&memory_).allocate(
                               static_cast<std::size_t>(items.size())),
                           static_cast<std::size_t>(items.size()));
  const SceneItemView::Place inside = items.isEmpty() ? view.place() : placeInside(view, *item);
  std::size_t next = 0;
  const auto addNext = [&] {
    children[next] = &add(*items[static_cast<qsizetype>(next)], inside, depth + 1);
    ++next;
  };
  while (next < children.size() && items[static_cast<qsizetype>(next)]->z() < 0) {
    addNext();
  }
  view.setPaintOrder(nextInPaintOrder_++);
  covers_.note(*item, view.itemClass(), *inside.surroundings, view.paintOrder());
  while (next < children.size()) {
    addNext();
  }
  view.setChildren(children);
}

SceneItemView::Place Scene::placeInside(const SceneItemView& view, const QQuickItem& item) {
  SceneItemView::Place result = view.place();
  result.parent = &view.itemClass();
  const ItemDescription& own = view.description();
  if (own.isElement) {
    result.spoken =
        &spoken_.emplace_back(SpokenText{own.label, own.value.value_or(QString()), result.spoken});
  }
  const ItemKind kind = view.itemClass().kind;
  const bool isComposite =
      kind == ItemKind::comboBox || kind == ItemKind::spinBox || kind == ItemKind::searchField;
  const bool isScroller = kind == ItemKind::flickable || kind == ItemKind::itemView ||
                          kind == ItemKind::tableView || kind == ItemKind::headerView ||
                          kind == ItemKind::pathView;
  if (!isComposite && !isScroller && !item.clip() && item.opacity() >= 1) {
    return result;
  }
  Surroundings& surroundings = surroundings_.emplace_back(*result.surroundings);
  result.surroundings = &surroundings;
  surroundings.opacity *= item.opacity();
  surroundings.insideCompositeControl |= isComposite;
  surroundings.insideHeader |= kind == ItemKind::headerView;
  const QRectF area = view.area();
  if (kind == ItemKind::flickable) {
    // Its content counts as a whole, unless it cannot be seen itself.
    if (!surroundings.visiblePart(area).isEmpty()) {
      surroundings = surroundings.unclippedIn(area);
    }
  } else if (isScroller || item.clip()) {
    surroundings = surroundings.clippedTo(area);
  }
  return result;
}

}  // namespace tarnix::qt6
