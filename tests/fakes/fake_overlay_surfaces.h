#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "probe/platform/overlay_surface.h"

namespace tarnix::fakes {

struct FakeOverlayWindow {
  platform::Size size{400, 800};
  double bottomInset = 0;
  /// On the desktop.
  platform::Point origin;
};

/// Surfaces over one window that the test describes. At most one exists at a time.
class FakeOverlaySurfaces : public platform::OverlaySurfaces {
 public:
  std::unique_ptr<platform::OverlaySurface> makeSurface(platform::WindowScene& scene) override {
    if (!window) {
      return nullptr;
    }
    lastScene = &scene;
    ++madeCount;
    return std::make_unique<Surface>(*this);
  }

  /// Each character half as wide as the font is high.
  platform::Size sizeOf(std::string_view text, const platform::Font& font) override {
    return {font.size * static_cast<double>(text.size()) / 2, font.size * 1.2};
  }

  /// Absent while there is nothing to draw on.
  std::optional<FakeOverlayWindow> window;
  /// What the surface shows; empty without one.
  platform::DisplayList shown;
  int showCount = 0;
  int madeCount = 0;
  int aliveCount = 0;
  const platform::WindowScene* lastScene = nullptr;

 private:
  class Surface : public platform::OverlaySurface {
   public:
    explicit Surface(FakeOverlaySurfaces& owner) : owner_(owner), origin_(owner.window->origin) {
      ++owner_.aliveCount;
    }
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;
    ~Surface() override {
      --owner_.aliveCount;
      owner_.shown.clear();
    }

    std::optional<Place> place() override {
      if (!owner_.window) {
        return std::nullopt;
      }
      const platform::Point before = std::exchange(origin_, owner_.window->origin);
      return Place{owner_.window->size,
                   owner_.window->bottomInset,
                   {before.x - origin_.x, before.y - origin_.y}};
    }

    void show(const platform::DisplayList& list) override {
      owner_.shown = list;
      ++owner_.showCount;
    }

   private:
    FakeOverlaySurfaces& owner_;
    platform::Point origin_;
  };
};

}  // namespace tarnix::fakes
