#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "probe/inspect/probe_view_hierarchy_snapshot.h"
#include "probe/platform/view.h"

namespace tarnix {

/// One walk over a view and everything below it, depth first, parents before children. The stack is
/// on the heap: the host's tree may be deeper than the host's stack has room for.
class ViewWalk {
 public:
  using Element = ProbeViewHierarchySnapshot::Element;

  /// Appends what is worth listing, repetitions and all.
  explicit ViewWalk(std::vector<Element>& elements) : elements_(elements) {}

  void walk(const platform::View& root);

 private:
  /// The subviews of a view that are being walked.
  struct Level {
    std::vector<std::shared_ptr<platform::View>> subviews;
    std::size_t next = 0;
  };

  void enter(const platform::View& view);
  void list(const platform::View& view);

  std::vector<Element>& elements_;
  std::vector<Level> path_;
  std::size_t visits_ = 0;
};

}  // namespace tarnix
