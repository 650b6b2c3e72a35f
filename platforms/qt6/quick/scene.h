#pragma once

#include <QSizeF>
#include <deque>
#include <memory>
#include <memory_resource>
#include <vector>

#include "platforms/qt6/quick/item_class.h"
#include "platforms/qt6/quick/scene_covers.h"
#include "platforms/qt6/quick/scene_item_view.h"
#include "platforms/qt6/shared/surroundings.h"

class QQuickItem;

namespace tarnix::qt6 {

/// All views of a Quick scene, made in one pass over its items: thousands of items are touched once
/// while they are at hand, and what is made of them lies side by side and goes at once. Views point
/// into it and keep it. Main thread.
class Scene : public std::enable_shared_from_this<Scene> {
 public:
  /// The view of `root`, the outermost item of a scene of this size.
  static std::shared_ptr<platform::View> rootView(QQuickItem& root, QSizeF size,
                                                  const Surroundings& surroundings);

  /// The views of the items of `path` alone, which leads from the outermost item inwards, as far as
  /// they are shown at all. What covers them is not known: they say no frames.
  static std::vector<std::shared_ptr<SceneItemView>> viewsAlong(
      const std::vector<QQuickItem*>& path, QSizeF size, const Surroundings& surroundings);

  explicit Scene(QSizeF size) : covers_(size) {}

  /// Makes the views below `view`, unless they are there.
  void expand(SceneItemView& view, int depth);

  const SceneCovers& covers() const { return covers_; }

 private:
  SceneItemView& add(QQuickItem& item, const SceneItemView::Place& place, int depth);
  SceneItemView::Place placeInside(const SceneItemView& view, const QQuickItem& item);

  // In bytes. Each block is larger than the last: a screen takes a handful.
  static constexpr std::size_t firstBlock = 16'384;

  std::pmr::monotonic_buffer_resource memory_{firstBlock};
  std::pmr::deque<SceneItemView> views_{&memory_};
  std::pmr::deque<Surroundings> surroundings_{&memory_};
  std::pmr::deque<SpokenText> spoken_{&memory_};
  SceneCovers covers_;
  int nextInPaintOrder_ = 0;
};

}  // namespace tarnix::qt6
