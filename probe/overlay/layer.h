#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "probe/overlay/animation.h"
#include "probe/platform/drawing.h"

namespace tarnix::overlay {

/// A rectangle that may hold others, and what is drawn in it. Serves as view and as layer alike:
/// neither takes any input here. Owned by the layer around it; whoever animates one keeps it too.
/// Main thread.
class Layer {
 public:
  /// `frame` in the layer around it.
  explicit Layer(const platform::Rect& frame);
  virtual ~Layer();
  Layer(const Layer&) = delete;
  Layer& operator=(const Layer&) = delete;

  /// In front of those that are there.
  void add(std::shared_ptr<Layer> sublayer);
  /// May destroy this.
  void removeFromSuperlayer();
  void removeSublayers();
  const std::vector<std::shared_ptr<Layer>>& sublayers() const { return sublayers_; }
  /// Null outside a tree.
  const Layer* superlayer() const { return superlayer_; }

  platform::Size size() const { return size_; }
  void setSize(platform::Size size) { size_ = size; }
  void setPosition(platform::Point middle);
  /// With all movements of its position.
  void moveBy(platform::Point distance);

  /// The value that holds where no animation does.
  double value(Property property) const { return values_[static_cast<std::size_t>(property)]; }
  void setValue(Property property, double value) {
    values_[static_cast<std::size_t>(property)] = value;
  }
  /// What is seen at `now`: that of the animation that was added last, else the value itself.
  double valueSeen(Property property, double now) const;

  /// Replaces the animation under the same key.
  void addAnimation(const std::string& key, const Animation& animation);
  void removeAnimation(const std::string& key);
  const Animation* animation(const std::string& key) const;

  /// Sets the beginning of what was added since the last frame and drops what is over, here and
  /// below.
  void advance(double now);
  /// Whether anything that can be seen moves, or will: here and below.
  bool needsFrames(double now) const;
  /// Whether nothing of it can be seen, now or once its animations go on.
  bool isInvisible(double now) const;

  /// One figure a sublayer.
  platform::DisplayList displayList(double now) const;
  /// This and what is in it, for a layer around with this transform, opacity and clip.
  void draw(platform::Figure& figure, const platform::Transform& outer, double opacity,
            const std::optional<platform::Clip>& clip, double now) const;

  platform::Color backgroundColor;
  double cornerRadius = 0;
  double borderWidth = 0;
  platform::Color borderColor;
  std::optional<platform::Shadow> shadow;
  /// Cuts its sublayers off at its own round rectangle.
  bool clipsToBounds = false;

 protected:
  platform::Rect bounds() const { return {{0, 0}, size_}; }
  /// What is drawn over the background and under the sublayers, in its own coordinates.
  virtual std::optional<platform::Shape> content(double now) const;

 private:
  struct KeyedAnimation {
    std::string key;
    Animation animation;
  };

  std::vector<std::shared_ptr<Layer>> sublayers_;
  Layer* superlayer_ = nullptr;
  platform::Size size_;
  std::array<double, propertyCount> values_{};
  /// In the order in which they were added.
  std::vector<KeyedAnimation> animations_;
};

}  // namespace tarnix::overlay
