#pragma once

#include "platforms/qt6/base/window_responder.h"

namespace tarnix::qt6 {

/// What an open menu or list does on a touch beside it: it takes it, and closes. Main thread.
class PopupDismissal : public WindowResponder {
 public:
  /// Touched at `point` of `window`, which the popup stands in front of.
  using WindowResponder::WindowResponder;

  bool isUserInteractionEnabled() const override { return true; }
  bool isFirstResponder() const override { return false; }
  platform::KeyInput* asKeyInput() override { return nullptr; }
};

}  // namespace tarnix::qt6
