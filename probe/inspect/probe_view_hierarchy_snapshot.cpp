#include "probe/inspect/probe_view_hierarchy_snapshot.h"

#include <memory>
#include <utility>

#include "probe/inspect/key_window.h"
#include "probe/inspect/top_to_bottom.h"
#include "probe/inspect/view_walk.h"

namespace tarnix::ProbeViewHierarchySnapshot {

std::vector<Element> capture() {
  std::vector<Element> elements;
  if (const std::shared_ptr<platform::Window> window = keyWindow()) {
    ViewWalk(elements).walk(*window);
  }
  return fromTopToBottom(std::move(elements), [](std::size_t) { return true; });
}

}  // namespace tarnix::ProbeViewHierarchySnapshot
