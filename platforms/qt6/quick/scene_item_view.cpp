#include "platforms/qt6/quick/scene_item_view.h"

#include <utility>

#include "platforms/qt6/quick/live_items.h"
#include "platforms/qt6/quick/paint_order.h"
#include "platforms/qt6/shared/frame.h"

namespace tarnix::qt6 {

SceneItemView::SceneItemView(QQuickItem& item, std::shared_ptr<const ItemClass> parent,
                             std::shared_ptr<const Surroundings> surroundings,
                             std::shared_ptr<const SceneCovers> covers)
    : item_(&item),
      class_(classOf(item)),
      parent_(std::move(parent)),
      surroundings_(std::move(surroundings)),
      covers_(std::move(covers)) {}

const ItemDescription& SceneItemView::description() const {
  if (!description_) {
    description_ = item_ == nullptr ? ItemDescription()
                                    : describe(*item_, *class_, parent_.get(), *surroundings_);
  }
  return *description_;
}

QRectF SceneItemView::area() const {
  if (item_ == nullptr) {
    return {};
  }
  return item_->mapRectToScene(QRectF(0, 0, item_->width(), item_->height()))
      .translated(surroundings_->origin);
}

QRectF SceneItemView::seenArea() const {
  if (item_ == nullptr) {
    return {};
  }
  const QRectF whole = area();
  const QRegion covered = covers_->over(*item_, whole.translated(-surroundings_->origin))
                              .translated(surroundings_->origin.toPoint());
  if (covered.isEmpty()) {
    return surroundings_->visiblePart(whole);
  }
  Surroundings narrowed = *surroundings_;
  narrowed.cover(covered);
  return narrowed.visiblePart(whole);
}

bool SceneItemView::isAccessibilityElement() const {
  return description().isElement && !seenArea().isEmpty();
}

platform::Rect SceneItemView::accessibilityFrame() const { return frameOf(seenArea()); }

std::optional<std::string> SceneItemView::accessibilityValue() const {
  const std::optional<QString>& value = description().value;
  return value ? std::optional(value->toStdString()) : std::nullopt;
}

std::vector<std::shared_ptr<platform::View>> SceneItemView::subviews() const {
  std::vector<std::shared_ptr<View>> result;
  if (item_ == nullptr) {
    return result;
  }
  QList<QQuickItem*> children = inPaintOrder(*item_);
  if (children.isEmpty()) {
    return result;
  }
  removeUnusedItems(*item_, *class_, parent_.get(), children);
  const std::shared_ptr<const Surroundings> surroundings = surroundingsOfChildren();
  result.reserve(static_cast<std::size_t>(children.size()));
  for (QQuickItem* child : std::as_const(children)) {
    result.push_back(std::make_shared<SceneItemView>(*child, class_, surroundings, covers_));
  }
  return result;
}

std::shared_ptr<const Surroundings> SceneItemView::surroundingsOfChildren() const {
  const ItemKind kind = class_->kind;
  const ItemDescription& own = description();
  const bool isComposite =
      kind == ItemKind::comboBox || kind == ItemKind::spinBox || kind == ItemKind::searchField;
  const bool isScroller = kind == ItemKind::flickable || kind == ItemKind::itemView ||
                          kind == ItemKind::tableView || kind == ItemKind::pathView;
  if (!isComposite && !isScroller && !own.isElement && !item_->clip() && item_->opacity() >= 1) {
    return surroundings_;
  }
  auto result = std::make_shared<Surroundings>(*surroundings_);
  result->opacity *= item_->opacity();
  result->insideCompositeControl |= isComposite;
  if (own.isElement) {
    result->spoken = std::make_shared<const SpokenText>(own.label, own.value.value_or(QString()),
                                                        surroundings_->spoken);
  }
  if (kind == ItemKind::flickable) {
    // Its content counts as a whole, unless it cannot be seen itself.
    if (!surroundings_->visiblePart(area()).isEmpty()) {
      *result = result->unclippedIn(area());
    }
  } else if (isScroller || item_->clip()) {
    *result = result->clippedTo(area());
  }
  return result;
}

}  // namespace tarnix::qt6
