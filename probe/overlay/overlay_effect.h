#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "probe/capture/probelog.h"
#include "probe/inspect/truncation.h"
#include "probe/overlay/probe_touch_overlay.h"

/// What the effects share.
namespace tarnix::ProbeTouchOverlay {

/// Where an effect draws: the overlay's root view and its animator. Tests false when there is
/// nothing to draw on.
struct Stage {
  overlay::Layer* root = nullptr;
  overlay::Animator* animator = nullptr;

  explicit operator bool() const { return root != nullptr; }

  static Stage current() {
    PassthroughWindow* const window = detail::overlayWindow();
    return window == nullptr ? Stage{} : Stage{window->rootView(), &window->animator()};
  }
};

inline void writeLine(const std::string& text) {
  probelog("[TarnixProbe] TouchOverlay: " + text + "\n");
}

inline std::string text(platform::Point point) {
  return std::to_string(truncatedTowardZero(point.x)) + "," +
         std::to_string(truncatedTowardZero(point.y));
}

/// A circle around its middle.
inline std::shared_ptr<overlay::Layer> makeCircle(platform::Point middle, double diameter) {
  auto circle = std::make_shared<overlay::Layer>(
      platform::Rect{{middle.x - diameter / 2, middle.y - diameter / 2}, {diameter, diameter}});
  circle->cornerRadius = diameter / 2;
  return circle;
}

}  // namespace tarnix::ProbeTouchOverlay
