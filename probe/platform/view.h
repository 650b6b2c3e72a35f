#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "probe/platform/accessibility_item.h"
#include "probe/platform/responder.h"
#include "probe/platform/touch_reactions.h"
#include "probe/platform/view_kind.h"

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
  /// The view that it lies in; null for a window, and for a view that has gone.
  virtual std::shared_ptr<View> superview() const { return nullptr; }
  /// Whether it is a field of any kind that takes text.
  virtual bool isTextField() const = 0;
  /// Which of the toolkit's well-known kinds it is, or is derived from.
  virtual ViewKind kind() const { return ViewKind::other; }
  /// The name that its author gave it; absent for most.
  virtual std::optional<std::string> accessibilityIdentifier() const { return std::nullopt; }
  /// The upright box around the whole view, on the screen: unlike the accessibility frame it is not
  /// cut to what can be seen. All four numbers are finite.
  virtual Rect wholeFrame() const { return accessibilityFrame(); }
  /// What it does with a person's touch and keys; null for a view that has gone. A view that came
  /// from `Window::hitTest` acts at the point that was asked about.
  virtual std::shared_ptr<Responder> responder() const { return nullptr; }
  /// The same as its responder says, for telling thousands of views apart without making one each.
  virtual TouchReactions touchReactions() const { return {}; }
  /// The same as its responder says, likewise.
  virtual bool isFirstResponder() const {
    const std::shared_ptr<Responder> own = responder();
    return own != nullptr && own->isFirstResponder();
  }

  const View* asView() const final { return this; }
};

}  // namespace tarnix::platform
