#pragma once

#include <chrono>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "probe/overlay/probe_touch_overlay.h"
#include "tests/unit/fake_world.h"

namespace tarnix::tests {

/// A host with one window of 400 x 800, whose frames come when the test says so.
class OverlayTest : public FakeWorldTest {
 protected:
  OverlayTest() {
    world_.application.addKeyWindow();
    world_.overlaySurfaces.window.emplace();
  }

  /// One frame, `seconds` after the effect began; the first one is what it begins with.
  void frameAt(double seconds) { world_.display.showFrame(begin_ + seconds); }

  /// 60 frames a second, from the last frame at `from` to the one at `to`.
  void framesFrom(double from, double to) {
    constexpr double rate = 60;
    const int count = static_cast<int>(std::lround((to - from) * rate));
    for (int frame = 1; frame <= count; ++frame) {
      world_.mainQueue.advance(std::chrono::nanoseconds(16'666'667));
      frameAt(from + frame / rate);
    }
  }

  /// The root view's own, without the orb.
  static std::vector<std::shared_ptr<overlay::Layer>> effectLayers() {
    std::vector<std::shared_ptr<overlay::Layer>> result;
    if (const auto& window = ProbeTouchOverlay::detail::state().window) {
      for (const std::shared_ptr<overlay::Layer>& layer : window->tree().sublayers()) {
        if (layer != ProbeTouchOverlay::detail::state().orb) {
          result.push_back(layer);
        }
      }
    }
    return result;
  }

  static double seen(const overlay::Layer& layer, overlay::Property property) {
    return layer.valueSeen(property, ProbeTouchOverlay::detail::state().window->animator().now());
  }

  static const ProbeOrbView& orb() { return *ProbeTouchOverlay::detail::state().orb; }
  static double orbOpacity() { return seen(orb(), overlay::Property::opacity); }

  static platform::Rect frameOf(const overlay::Layer& layer) {
    return {{layer.value(overlay::Property::positionX) - layer.size().width / 2,
             layer.value(overlay::Property::positionY) - layer.size().height / 2},
            layer.size()};
  }

  std::string standardError() const { return fakes::FakeServices::shared().standardErrorText(); }

  /// Nothing is drawn and nothing costs anything.
  void expectRest() {
    EXPECT_EQ(world_.overlaySurfaces.aliveCount, 0);
    EXPECT_EQ(world_.display.linkCount(), 0U);
    EXPECT_TRUE(effectLayers().empty());
  }

 private:
  static constexpr double begin_ = 1000;
};

}  // namespace tarnix::tests
