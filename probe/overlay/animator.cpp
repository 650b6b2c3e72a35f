#include "probe/overlay/animator.h"

#include <algorithm>
#include <utility>

namespace tarnix::overlay {

namespace {

/// A layer has one animation of a view's a property.
std::string keyOf(Property property) {
  return "view." + std::to_string(static_cast<int>(property));
}

}  // namespace

void Animator::animate(const Timing& timing, const std::vector<Change>& changes,
                       std::function<void()> completion) {
  for (const Change& change : changes) {
    const Animation animation{.property = change.property,
                              .from = change.layer->valueSeen(change.property, now_),
                              .to = change.value,
                              .duration = timing.duration,
                              .delay = timing.delay,
                              .curve = timing.curve};
    change.layer->setValue(change.property, change.value);
    add(*change.layer, keyOf(change.property), animation);
  }
  if (completion) {
    const double wait = timing.delay + timing.duration;
    completions_.push_back(
        {isInsideFrame_ ? std::optional(now_ + wait) : std::nullopt, wait, std::move(completion)});
  }
}

void Animator::add(Layer& layer, const std::string& key, Animation animation) const {
  if (isInsideFrame_) {
    animation.addedAt = now_;
  }
  layer.addAnimation(key, animation);
}

std::vector<Animator::Completion>::iterator Animator::nextDue() {
  return std::min_element(
      completions_.begin(), completions_.end(),
      [](const Completion& left, const Completion& right) { return *left.due < *right.due; });
}

void Animator::advance(Layer& root, double now) {
  const double frame = std::max(now, now_);
  for (Completion& completion : completions_) {
    if (!completion.due) {
      completion.due = frame + completion.wait;
    }
  }
  root.advance(frame);
  isInsideFrame_ = true;
  for (auto next = nextDue(); next != completions_.end() && *next->due <= frame; next = nextDue()) {
    now_ = *next->due;
    const std::function<void()> closure = std::move(next->closure);
    completions_.erase(next);
    closure();
  }
  isInsideFrame_ = false;
  now_ = frame;
  root.advance(frame);
}

}  // namespace tarnix::overlay
