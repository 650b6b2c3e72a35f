#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "probe/inspect/probe_accessibility_scanner.h"
#include "probe/platform/accessibility_item.h"
#include "probe/platform/view.h"

namespace tarnix {

/// One walk over everything below an item, in the order in which assistive technology meets it: the
/// item itself, the children that it declares, its subviews, the children that it counts. An item
/// may be met more than once.
///
/// The stack is on the heap: the host's tree may be deeper than the host's stack has room for.
class AccessibilityWalk {
 public:
  /// Appends what is worth recording.
  explicit AccessibilityWalk(std::vector<ProbeAccessibilityScanner::Element>& elements)
      : elements_(elements) {}

  void scanAccessibilityTree(std::shared_ptr<platform::AccessibilityItem> root);

 private:
  enum class Stage { declaredChildren, subviews, countedChildren, done };

  /// An item whose children are being visited.
  struct Level {
    std::shared_ptr<platform::AccessibilityItem> item;
    Stage stage = Stage::declaredChildren;
    /// Of the next child within the stage.
    std::size_t next = 0;
    std::size_t count = 0;
    std::vector<std::shared_ptr<platform::AccessibilityItem>> declared;
    std::vector<std::shared_ptr<platform::View>> subviews;
    /// A view that is the probe's own is neither recorded nor entered.
    bool isProbeView = false;
  };

  void enter(std::shared_ptr<platform::AccessibilityItem> item);
  void record(const platform::AccessibilityItem& item, const platform::View* view);
  /// The next child of `level`, which may be null; nothing when there is none left.
  static std::optional<std::shared_ptr<platform::AccessibilityItem>> nextChild(Level& level);
  static void beginNextStage(Level& level);

  std::vector<ProbeAccessibilityScanner::Element>& elements_;
  std::vector<Level> path_;
  std::size_t visits_ = 0;
};

}  // namespace tarnix
