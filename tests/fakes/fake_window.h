#pragma once

#include <functional>
#include <memory>

#include "probe/platform/window.h"
#include "tests/fakes/fake_view.h"

namespace tarnix::fakes {

class FakeWindow : public FakeViewOf<platform::Window> {
 public:
  bool isKeyWindow() const override { return key; }
  std::shared_ptr<platform::View> hitTest(platform::Point point) const override {
    return atPoint ? atPoint(point) : nullptr;
  }

  std::optional<platform::Picture> lastPicture() const override { return picture; }

  bool key = false;
  std::optional<platform::Picture> picture;
  /// What a touch reaches; nothing reaches anything while this is empty.
  std::function<std::shared_ptr<platform::View>(platform::Point)> atPoint;
};

}  // namespace tarnix::fakes
