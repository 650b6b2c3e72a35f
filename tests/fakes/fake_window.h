#pragma once

#include "probe/platform/window.h"
#include "tests/fakes/fake_view.h"

namespace tarnix::fakes {

class FakeWindow : public FakeViewOf<platform::Window> {
 public:
  bool isKeyWindow() const override { return key; }

  std::optional<platform::Picture> lastPicture() const override { return picture; }

  bool key = false;
  std::optional<platform::Picture> picture;
};

}  // namespace tarnix::fakes
