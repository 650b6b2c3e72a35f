#include "probe/inspect/probe_view_hierarchy_snapshot.h"

#include <bit>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "probe/inspect/arrangement.h"
#include "probe/inspect/key_window.h"
#include "probe/inspect/view_walk.h"

namespace tarnix::ProbeViewHierarchySnapshot {
namespace {

struct LabelAndFrame {
  static std::size_t hash(const Element& element) {
    const platform::Rect& frame = element.frame;
    std::uint64_t result = element.label ? std::hash<std::string>{}(*element.label) : 1;
    for (const double number :
         {frame.origin.x, frame.origin.y, frame.size.width, frame.size.height}) {
      // The two zeros are one number.
      result = (result ^ std::bit_cast<std::uint64_t>(number + 0.0)) * 0x9E37'79B9'7F4A'7C15;
    }
    // The upper half depends on all of them; the table looks at the lower.
    return static_cast<std::size_t>(result ^ (result >> 32));
  }

  static bool isSame(const Element& left, const Element& right) {
    return left.frame == right.frame && left.label == right.label;
  }
};

}  // namespace

std::vector<Element> capture() {
  std::vector<Element> elements;
  if (const std::shared_ptr<platform::Window> window = keyWindow()) {
    ViewWalk(elements).walk(*window);
  }
  return distinctFromTopToBottom<LabelAndFrame>(std::move(elements));
}

}  // namespace tarnix::ProbeViewHierarchySnapshot
