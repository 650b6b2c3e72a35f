#include "platforms/qt6/quick/scene_item_view.h"

#include <utility>

#include "platforms/qt6/quick/item_interaction.h"
#include "platforms/qt6/quick/item_responder.h"
#include "platforms/qt6/quick/scene.h"
#include "platforms/qt6/shared/author_name.h"
#include "platforms/qt6/shared/frame.h"

namespace tarnix::qt6 {

SceneItemView::SceneItemView(Scene& scene, QQuickItem& item, const ItemClass& itemClass,
                             const Place& place, int depth)
    : scene_(scene),
      item_(&item),
      class_(itemClass),
      place_(place),
      description_(describe(item, itemClass, place.parent, *place.surroundings, place.spoken)),
      objectName_(item.objectName()),
      opacity_(item.opacity()),
      depth_(depth),
      isVisible_(item.isVisible()) {}

void SceneItemView::setChildren(std::span<SceneItemView* const> children) {
  children_ = children;
  for (SceneItemView* child : children_) {
    child->parent_ = this;
  }
  isExpanded_ = true;
}

QRectF SceneItemView::area() const {
  if (item_ == nullptr) {
    return {};
  }
  return item_->mapRectToScene(QRectF(0, 0, item_->width(), item_->height()))
      .translated(place_.surroundings->origin);
}

const QRectF& SceneItemView::elementArea() const {
  if (!elementArea_) {
    elementArea_ = findElementArea();
  }
  return *elementArea_;
}

QRectF SceneItemView::findElementArea() const {
  const Surroundings& surroundings = *place_.surroundings;
  const QRectF whole = area();
  const QRegion covered = scene_.covers().over(paintOrder_, whole);
  if (covered.isEmpty()) {
    return surroundings.visiblePart(whole);
  }
  Surroundings narrowed = surroundings;
  narrowed.cover(covered);
  return narrowed.visiblePart(whole);
}

platform::Rect SceneItemView::accessibilityFrame() const {
  // What is an element is where it can be pointed at; any other view is where it is.
  return frameOf(isAccessibilityElement() ? elementArea() : area());
}

platform::Rect SceneItemView::wholeFrame() const { return frameOf(area()); }

std::shared_ptr<platform::View> SceneItemView::superview() const {
  if (item_ == nullptr || parent_ == nullptr) {
    return nullptr;
  }
  return {scene_.shared_from_this(), parent_};
}

platform::ViewKind SceneItemView::kind() const {
  return item_ == nullptr ? platform::ViewKind::other : viewKindOf(*item_, class_);
}

std::optional<std::string> SceneItemView::accessibilityIdentifier() const {
  return item_ == nullptr ? std::nullopt : authorsName(objectName_);
}

platform::TouchReactions SceneItemView::touchReactions() const {
  return item_ == nullptr ? platform::TouchReactions()
                          : touchReactionsOf(*item_, class_, description_);
}

std::shared_ptr<platform::Responder> SceneItemView::responder() const {
  if (item_ == nullptr) {
    return nullptr;
  }
  const QPointF centre = item_->mapToScene({item_->width() / 2, item_->height() / 2});
  return std::make_shared<ItemResponder>(*item_, centre, std::nullopt);
}

std::optional<std::string> SceneItemView::accessibilityValue() const {
  return description_.value ? std::optional(description_.value->toStdString()) : std::nullopt;
}

std::vector<std::shared_ptr<platform::View>> SceneItemView::subviews() const {
  if ((isExpanded_ && children_.empty()) || item_ == nullptr) {
    return {};
  }
  if (!isExpanded_) {
    // A hidden item, which hardly anybody looks into.
    scene_.expand(const_cast<SceneItemView&>(*this), depth_);
  }
  std::vector<std::shared_ptr<View>> result;
  if (children_.empty()) {
    return result;
  }
  const std::shared_ptr<Scene> scene = scene_.shared_from_this();
  result.reserve(children_.size());
  for (SceneItemView* child : children_) {
    result.emplace_back(scene, child);
  }
  return result;
}

}  // namespace tarnix::qt6
