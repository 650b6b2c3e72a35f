#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "probe/capture/probelog.h"
#include "probe/inspect/truncation.h"
#include "probe/overlay/probe_touch_overlay.h"

/// What the effects share.
namespace tarnix::ProbeTouchOverlay {

/// More things than these nobody tells apart. A companion may send commands faster than their
/// effects end, and the host must not pay for that.
inline constexpr std::size_t mostThingsShown = 64;

/// Where an effect draws: the overlay's root view and its animator. Tests false when there is
/// nothing to draw on, or no room.
struct Stage {
  overlay::Layer* root = nullptr;
  overlay::Animator* animator = nullptr;

  explicit operator bool() const { return root != nullptr; }

  static Stage current() {
    PassthroughWindow* const window = detail::overlayWindow();
    overlay::Layer* const root = window == nullptr ? nullptr : window->rootView();
    return root == nullptr || root->sublayers().size() >= mostThingsShown
               ? Stage{}
               : Stage{root, &window->animator()};
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
