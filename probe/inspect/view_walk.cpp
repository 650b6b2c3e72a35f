#include "probe/inspect/view_walk.h"

#include <cmath>
#include <string>
#include <string_view>
#include <utility>

namespace tarnix {
namespace {

using platform::Rect;
using platform::View;
using platform::ViewKind;

/// What stands behind the last dot; dots at the end do not count.
std::string_view lastPiece(std::string_view name) {
  const std::size_t end = name.find_last_not_of('.');
  if (end == std::string_view::npos) {
    return "View";
  }
  name = name.substr(0, end + 1);
  return name.substr(name.rfind('.') + 1);
}

std::string typeOf(const View& view) {
  switch (view.kind()) {
    case ViewKind::button:
      return "Button";
    case ViewKind::label:
      return "Label";
    case ViewKind::textField:
      return "TextField";
    case ViewKind::textView:
      return "TextView";
    case ViewKind::toggle:
      return "Switch";
    case ViewKind::slider:
      return "Slider";
    case ViewKind::image:
      return "Image";
    case ViewKind::tableCell:
    case ViewKind::collectionCell:
      return "Cell";
    case ViewKind::other:
      break;
  }
  return std::string(lastPiece(view.className()));
}

bool isInteractive(const View& view) {
  const platform::TouchReactions reactions = view.touchReactions();
  return reactions.isUserInteractionEnabled &&
         (reactions.isControl || reactions.hasGestureRecognizers || view.isAccessibilityElement());
}

std::optional<std::string> labelOf(const View& view) {
  std::string label = view.accessibilityLabel();
  if (label.empty() && !view.hasAccessibilityLabel()) {
    return std::nullopt;
  }
  return label;
}

bool isFinite(const Rect& frame) {
  return std::isfinite(frame.origin.x) && std::isfinite(frame.origin.y) &&
         std::isfinite(frame.size.width) && std::isfinite(frame.size.height);
}

}  // namespace

void ViewWalk::walk(const View& root) {
  enter(root);
  while (!path_.empty()) {
    Level& level = path_.back();
    if (level.next == level.subviews.size()) {
      path_.pop_back();
    } else if (const std::shared_ptr<View> view = std::move(level.subviews[level.next++])) {
      enter(*view);
    }
  }
}

void ViewWalk::enter(const View& view) {
  if (path_.size() >= ProbeViewHierarchySnapshot::maximumDepth ||
      visits_ >= ProbeViewHierarchySnapshot::maximumVisits) {
    return;
  }
  ++visits_;
  if (view.isHidden() || !(view.alpha() > ProbeViewHierarchySnapshot::largestInvisibleAlpha)) {
    return;
  }
  list(view);
  path_.push_back({view.subviews()});
}

void ViewWalk::list(const View& view) {
  Element element;
  element.label = labelOf(view);
  element.identifier = view.accessibilityIdentifier();
  const bool isNamed = element.label || element.identifier;
  element.isInteractive = isInteractive(view);
  // Most views of a screen end here, before anybody works out where they are.
  if (!isNamed && !element.isInteractive) {
    return;
  }
  element.frame = view.wholeFrame();
  // A platform gives finite numbers; one that breaks its word must not break the order of the list.
  if (!isFinite(element.frame)) {
    return;
  }
  constexpr double smallest = ProbeViewHierarchySnapshot::smallestUnnamedSide;
  if (!isNamed && !(element.frame.size.width > smallest && element.frame.size.height > smallest)) {
    return;
  }
  element.type = typeOf(view);
  elements_.push_back(std::move(element));
}

}  // namespace tarnix
