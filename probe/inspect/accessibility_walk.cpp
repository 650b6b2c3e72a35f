#include "probe/inspect/accessibility_walk.h"

#include <array>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>

#include "probe/inspect/class_name.h"

namespace tarnix {
namespace {

namespace traits = platform::accessibility_traits;
using platform::AccessibilityItem;
using platform::AccessibilityTraits;
using platform::View;

// Below this a view is taken for invisible.
constexpr double smallestVisibleAlpha = 0.01;

struct Kind {
  AccessibilityTraits trait;
  std::string_view name;
};

// The first trait that an item has names its kind.
constexpr std::array<Kind, 8> kinds = {{
    {traits::button, "Button"},
    {traits::link, "Link"},
    {traits::image, "Image"},
    {traits::searchField, "SearchField"},
    {traits::header, "Header"},
    {traits::staticText, "StaticText"},
    {traits::adjustable, "Slider"},
    {traits::tabBar, "TabBar"},
}};

std::string_view kindOf(AccessibilityTraits itemTraits) {
  for (const Kind& kind : kinds) {
    if ((itemTraits & kind.trait) != 0) {
      return kind.name;
    }
  }
  return "Other";
}

}  // namespace

void AccessibilityWalk::scanAccessibilityTree(std::shared_ptr<AccessibilityItem> root) {
  enter(std::move(root));
  while (!path_.empty()) {
    std::optional<std::shared_ptr<AccessibilityItem>> child = nextChild(path_.back());
    if (!child) {
      path_.pop_back();
    } else if (*child) {
      enter(*std::move(child));
    }
  }
}

void AccessibilityWalk::enter(std::shared_ptr<AccessibilityItem> item) {
  if (path_.size() >= ProbeAccessibilityScanner::maximumDepth ||
      visits_ >= ProbeAccessibilityScanner::maximumVisits) {
    return;
  }
  ++visits_;
  const View* view = item->asView();
  const bool isProbeView = view != nullptr && isProbeClass(view->className());
  // Recorded before it is asked whether it is hidden: a hidden view may still speak for itself.
  if (!isProbeView) {
    record(*item, view);
  }
  Level level;
  std::optional<std::vector<std::shared_ptr<AccessibilityItem>>> declared =
      item->accessibilityElements();
  if (declared) {
    level.declared = *std::move(declared);
  }
  level.count = level.declared.size();
  level.item = std::move(item);
  level.isProbeView = isProbeView;
  path_.push_back(std::move(level));
}

void AccessibilityWalk::record(const AccessibilityItem& item, const View* view) {
  if (!item.isAccessibilityElement()) {
    return;
  }
  std::string label = item.accessibilityLabel();
  const platform::Rect frame = item.accessibilityFrame();
  // A platform gives finite numbers; one that breaks its word must not break the order of the list.
  if (label.empty() || !(frame.size.width > 0) || !(frame.size.height > 0) ||
      !std::isfinite(frame.minX()) || !std::isfinite(frame.minY())) {
    return;
  }
  const AccessibilityTraits itemTraits = item.accessibilityTraits();
  elements_.push_back({.label = std::move(label),
                       .type = kindOf(itemTraits),
                       .frame = frame,
                       .value = item.accessibilityValue(),
                       .traits = itemTraits,
                       .isButton = (itemTraits & traits::button) != 0,
                       .isTextField = (itemTraits & traits::searchField) != 0 ||
                                      (view != nullptr && view->isTextField())});
}

std::optional<std::shared_ptr<AccessibilityItem>> AccessibilityWalk::nextChild(Level& level) {
  while (level.next == level.count && level.stage != Stage::done) {
    beginNextStage(level);
  }
  switch (level.stage) {
    case Stage::declaredChildren:
      return std::move(level.declared[level.next++]);
    case Stage::subviews:
      return std::move(level.subviews[level.next++]);
    case Stage::countedChildren:
      return level.item->accessibilityElement(level.next++);
    case Stage::done:
      break;
  }
  return std::nullopt;
}

void AccessibilityWalk::beginNextStage(Level& level) {
  level.next = 0;
  level.count = 0;
  if (level.stage == Stage::declaredChildren) {
    const View* view = level.item->asView();
    if (view == nullptr) {
      level.stage = Stage::subviews;
    } else if (view->isHidden() || view->alpha() < smallestVisibleAlpha || level.isProbeView) {
      level.stage = Stage::done;
    } else {
      level.stage = Stage::subviews;
      level.subviews = view->subviews();
      level.count = level.subviews.size();
    }
  } else if (level.stage == Stage::subviews) {
    level.stage = Stage::countedChildren;
    level.count = level.item->accessibilityElementCount().value_or(0);
  } else {
    level.stage = Stage::done;
  }
}

}  // namespace tarnix
