#pragma once

#include "probe/platform/window.h"
#include "tests/fakes/fake_view.h"

namespace tarnix::fakes {

class FakeWindow : public FakeViewOf<platform::Window> {
 public:
  bool isKeyWindow() const override { return key; }

  bool key = false;
};

}  // namespace tarnix::fakes
