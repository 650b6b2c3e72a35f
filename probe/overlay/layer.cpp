#include "probe/overlay/layer.h"

#include <algorithm>
#include <utility>

namespace tarnix::overlay {

Layer::Layer(const platform::Rect& frame) : size_(frame.size) {
  setValue(Property::opacity, 1);
  setValue(Property::scale, 1);
  setValue(Property::strokeEnd, 1);
  setPosition({frame.midX(), frame.midY()});
}

Layer::~Layer() { removeSublayers(); }

void Layer::removeSublayers() {
  for (const std::shared_ptr<Layer>& sublayer : sublayers_) {
    sublayer->superlayer_ = nullptr;
  }
  sublayers_.clear();
}

void Layer::add(std::shared_ptr<Layer> sublayer) {
  sublayer->superlayer_ = this;
  sublayers_.push_back(std::move(sublayer));
}

void Layer::removeFromSuperlayer() {
  if (Layer* const superlayer = std::exchange(superlayer_, nullptr)) {
    std::erase_if(superlayer->sublayers_,
                  [this](const std::shared_ptr<Layer>& layer) { return layer.get() == this; });
  }
}

void Layer::setPosition(platform::Point middle) {
  setValue(Property::positionX, middle.x);
  setValue(Property::positionY, middle.y);
}

void Layer::moveBy(platform::Point distance) {
  const auto distanceOf = [distance](Property property) {
    return property == Property::positionX   ? distance.x
           : property == Property::positionY ? distance.y
                                             : 0;
  };
  for (const Property property : {Property::positionX, Property::positionY}) {
    setValue(property, value(property) + distanceOf(property));
  }
  for (KeyedAnimation& entry : animations_) {
    entry.animation.from += distanceOf(entry.animation.property);
    entry.animation.to += distanceOf(entry.animation.property);
  }
}

double Layer::valueSeen(Property property, double now) const {
  const auto latest = std::find_if(
      animations_.rbegin(), animations_.rend(),
      [&](const KeyedAnimation& entry) { return entry.animation.property == property; });
  return latest == animations_.rend() ? value(property) : latest->animation.valueAt(now);
}

void Layer::addAnimation(const std::string& key, const Animation& animation) {
  removeAnimation(key);
  animations_.push_back({key, animation});
}

void Layer::removeAnimation(const std::string& key) {
  std::erase_if(animations_, [&](const KeyedAnimation& entry) { return entry.key == key; });
}

const Animation* Layer::animation(const std::string& key) const {
  const auto found = std::find_if(animations_.begin(), animations_.end(),
                                  [&](const KeyedAnimation& entry) { return entry.key == key; });
  return found == animations_.end() ? nullptr : &found->animation;
}

void Layer::advance(double now) {
  for (KeyedAnimation& entry : animations_) {
    if (!entry.animation.addedAt) {
      entry.animation.addedAt = now;
    }
  }
  std::erase_if(animations_, [now](const KeyedAnimation& entry) {
    return entry.animation.isOver(now) && !entry.animation.staysAtEnd;
  });
  for (const std::shared_ptr<Layer>& sublayer : sublayers_) {
    sublayer->advance(now);
  }
}

bool Layer::isInvisible(double now) const {
  return valueSeen(Property::opacity, now) <= 0 &&
         std::none_of(animations_.begin(), animations_.end(), [now](const KeyedAnimation& entry) {
           return entry.animation.property == Property::opacity && !entry.animation.isOver(now);
         });
}

bool Layer::needsFrames(double now) const {
  if (isInvisible(now)) {
    return false;
  }
  return std::any_of(animations_.begin(), animations_.end(),
                     [now](const KeyedAnimation& entry) { return !entry.animation.isOver(now); }) ||
         std::any_of(
             sublayers_.begin(), sublayers_.end(),
             [now](const std::shared_ptr<Layer>& layer) { return layer->needsFrames(now); });
}

platform::DisplayList Layer::displayList(double now) const {
  platform::DisplayList list;
  for (const std::shared_ptr<Layer>& sublayer : sublayers_) {
    platform::Figure figure;
    sublayer->draw(figure, {}, 1, std::nullopt, now);
    if (!figure.empty()) {
      list.push_back(std::move(figure));
    }
  }
  return list;
}

void Layer::draw(platform::Figure& figure, const platform::Transform& outer, double opacity,
                 const std::optional<platform::Clip>& clip, double now) const {
  const double ownOpacity = opacity * std::clamp(valueSeen(Property::opacity, now), 0.0, 1.0);
  const double scale = valueSeen(Property::scale, now);
  if (ownOpacity <= 0 || scale <= 0) {
    return;
  }
  const platform::Transform transform = platform::Transform{
      scale,
      {valueSeen(Property::positionX, now) + valueSeen(Property::translationX, now) -
           scale * size_.width / 2,
       valueSeen(Property::positionY, now) + valueSeen(Property::translationY, now) -
           scale * size_.height / 2}}.within(outer);
  const bool hasBorder = borderWidth > 0 && borderColor.alpha > 0;
  platform::RoundedRectangle background{
      .frame = bounds(), .cornerRadius = cornerRadius, .fill = backgroundColor, .shadow = shadow};
  // The border of a layer that cuts its sublayers off lies over them.
  if (hasBorder && !clipsToBounds) {
    background.borderWidth = borderWidth;
    background.borderColor = borderColor;
  }
  if (backgroundColor.alpha > 0 || shadow || background.borderWidth > 0) {
    figure.push_back({background, transform, ownOpacity, clip});
  }
  if (std::optional<platform::Shape> shape = content(now)) {
    figure.push_back({*std::move(shape), transform, ownOpacity, clip});
  }
  const std::optional<platform::Clip> innerClip =
      clipsToBounds ? platform::Clip{transform, bounds(), cornerRadius} : clip;
  for (const std::shared_ptr<Layer>& sublayer : sublayers_) {
    sublayer->draw(figure, transform, ownOpacity, innerClip, now);
  }
  if (hasBorder && clipsToBounds) {
    figure.push_back({platform::RoundedRectangle{.frame = bounds(),
                                                 .cornerRadius = cornerRadius,
                                                 .borderWidth = borderWidth,
                                                 .borderColor = borderColor},
                      transform, ownOpacity, clip});
  }
}

std::optional<platform::Shape> Layer::content(double) const { return std::nullopt; }

}  // namespace tarnix::overlay
