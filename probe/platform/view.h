#pragma once

#include <memory>
#include <string>
#include <vector>

#include "probe/platform/accessibility_item.h"

namespace tarnix::platform {

/// A rectangle of the host's user interface that may hold others. Main thread; lifetime as said of
/// `AccessibilityItem`.
class View : public AccessibilityItem {
 public:
  /// The class as a person wrote it, qualified names joined by dots.
  virtual std::string className() const = 0;
  /// Hidden itself; a view inside a hidden one need not be.
  virtual bool isHidden() const = 0;
  /// Opacity from 0 to 1.
  virtual double alpha() const = 0;
  /// Back to front.
  virtual std::vector<std::shared_ptr<View>> subviews() const = 0;
  /// Whether it is a field of any kind that takes text.
  virtual bool isTextField() const = 0;

  const View* asView() const final { return this; }
};

}  // namespace tarnix::platform
