#include "probe/inspect/probe_view_hierarchy_snapshot.h"

#include <algorithm>
#include <memory>

#include "probe/inspect/key_window.h"
#include "probe/inspect/view_walk.h"

namespace tarnix::ProbeViewHierarchySnapshot {

std::vector<Element> capture() {
  std::vector<Element> elements;
  if (const std::shared_ptr<platform::Window> window = keyWindow()) {
    ViewWalk(elements).walk(*window);
  }
  std::stable_sort(elements.begin(), elements.end(), [](const Element& left, const Element& right) {
    return left.frame.minY() < right.frame.minY();
  });
  return elements;
}

}  // namespace tarnix::ProbeViewHierarchySnapshot
