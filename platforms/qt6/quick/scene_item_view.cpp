#include "platforms/qt6/quick/scene_item_view.h"

#include <algorithm>
#include <utility>

#include "platforms/qt6/quick/live_items.h"
#include "platforms/qt6/shared/frame.h"

namespace tarnix::qt6 {

SceneItemView::SceneItemView(QQuickItem& item, std::shared_ptr<const ItemClass> parent,
                             std::shared_ptr<const Surroundings> surroundings)
    : item_(&item),
      class_(classOf(item)),
      parent_(std::move(parent)),
      surroundings_(std::move(surroundings)) {}

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

bool SceneItemView::isAccessibilityElement() const {
  return description().isElement && !surroundings_->visiblePart(area()).isEmpty();
}

platform::Rect SceneItemView::accessibilityFrame() const {
  return frameOf(surroundings_->visiblePart(area()));
}

std::optional<std::string> SceneItemView::accessibilityValue() const {
  const std::optional<QString>& value = description().value;
  return value ? std::optional(value->toStdString()) : std::nullopt;
}

std::vector<std::shared_ptr<platform::View>> SceneItemView::subviews() const {
  std::vector<std::shared_ptr<View>> result;
  if (item_ == nullptr) {
    return result;
  }
  QList<QQuickItem*> children = item_->childItems();
  if (children.isEmpty()) {
    return result;
  }
  if (parent_ != nullptr) {
    removeUnusedItems(*parent_, *item_, children);
  }
  const auto isBehind = [](const QQuickItem* left, const QQuickItem* right) {
    return left->z() < right->z();
  };
  if (!std::is_sorted(children.cbegin(), children.cend(), isBehind)) {
    std::stable_sort(children.begin(), children.end(), isBehind);
  }
  const std::shared_ptr<const Surroundings> surroundings = surroundingsOfChildren();
  result.reserve(static_cast<std::size_t>(children.size()));
  for (QQuickItem* child : std::as_const(children)) {
    result.push_back(std::make_shared<SceneItemView>(*child, class_, surroundings));
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
      result->clip.reset();
    }
  } else if (isScroller || item_->clip()) {
    *result = result->clippedTo(area());
  }
  return result;
}

}  // namespace tarnix::qt6
