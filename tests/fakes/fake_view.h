#pragma once

#include <memory>
#include <string>
#include <vector>

#include "probe/platform/view.h"
#include "tests/fakes/fake_accessibility_item.h"

namespace tarnix::fakes {

/// Answers what its members hold, for any interface that is a view.
template <class Interface>
class FakeViewOf : public FakeItemOf<Interface> {
 public:
  std::string className() const override { return name; }
  bool isHidden() const override { return hidden; }
  double alpha() const override { return opacity; }
  std::vector<std::shared_ptr<platform::View>> subviews() const override { return children; }
  bool isTextField() const override { return textField; }
  platform::ViewKind kind() const override { return viewKind; }
  std::optional<std::string> accessibilityIdentifier() const override { return identifier; }
  platform::Rect wholeFrame() const override { return whole.value_or(this->accessibilityFrame()); }
  platform::TouchReactions touchReactions() const override { return reactions; }
  std::shared_ptr<platform::View> superview() const override { return parent.lock(); }
  std::shared_ptr<platform::Responder> responder() const override { return touch; }

  std::string name = "View";
  bool hidden = false;
  double opacity = 1;
  std::vector<std::shared_ptr<platform::View>> children;
  bool textField = false;
  platform::ViewKind viewKind = platform::ViewKind::other;
  std::optional<std::string> identifier;
  /// Where all of it stands; absent when that is the accessibility frame.
  std::optional<platform::Rect> whole;
  platform::TouchReactions reactions;
  /// Null for a view that reacts to nothing.
  std::shared_ptr<platform::Responder> touch;
  std::weak_ptr<platform::View> parent;
};

using FakeView = FakeViewOf<platform::View>;

}  // namespace tarnix::fakes
