#pragma once

#include <memory>
#include <vector>

#include "probe/platform/control.h"
#include "probe/platform/gesture_recognizer.h"
#include "probe/platform/key_input.h"
#include "probe/platform/scroll_view.h"
#include "probe/platform/text_input.h"

namespace tarnix::platform {

/// What a view does with a person's touch and keys. Main thread. Valid until the main thread
/// returns to its loop. Any of these may run code of the host, which may destroy the view; what is
/// asked of it afterwards is then answered as for a view that reacts to nothing.
class Responder {
 public:
  virtual ~Responder() = default;

  virtual bool isUserInteractionEnabled() const = 0;
  virtual bool isFirstResponder() const = 0;
  /// Does what assistive technology would to use the view. False when it did nothing.
  virtual bool accessibilityActivate() = 0;
  /// In the order in which they are asked.
  virtual std::vector<std::shared_ptr<GestureRecognizer>> gestureRecognizers() = 0;

  /// Each null for a view that is none. Valid as long as this.
  virtual Control* asControl() { return nullptr; }
  virtual ScrollView* asScrollView() { return nullptr; }
  virtual TextInput* asTextInput() { return nullptr; }
  virtual KeyInput* asKeyInput() { return nullptr; }
};

}  // namespace tarnix::platform
