#include "companion/command/view_tree.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

#include "companion/output/display_text.h"

namespace tarnix::companion {
namespace {

/// Lines that are indented further say nothing on any terminal.
constexpr std::size_t deepest = 40;

struct Node {
  const SnapshotElement* view = nullptr;
  /// In the order in which the views were listed.
  std::vector<std::size_t> children;
};

/// Numbers of a host may lie anywhere.
double areaOf(const SnapshotElement& view) {
  return static_cast<double>(view.width) * static_cast<double>(view.height);
}

bool holds(const SnapshotElement& outer, const SnapshotElement& inner) {
  const auto end = [](std::int64_t start, std::int64_t length) {
    return static_cast<double>(start) + static_cast<double>(length);
  };
  return outer.x <= inner.x && outer.y <= inner.y &&
         end(inner.x, inner.width) <= end(outer.x, outer.width) &&
         end(inner.y, inner.height) <= end(outer.y, outer.height);
}

/// The last node stands for what holds all of them.
std::vector<Node> nodesOf(const std::vector<SnapshotElement>& views) {
  std::vector<std::size_t> largestFirst(views.size());
  std::iota(largestFirst.begin(), largestFirst.end(), std::size_t{0});
  std::stable_sort(largestFirst.begin(), largestFirst.end(),
                   [&](std::size_t left, std::size_t right) {
                     return areaOf(views[left]) > areaOf(views[right]);
                   });
  std::vector<Node> nodes(views.size() + 1);
  for (const std::size_t index : largestFirst) {
    nodes[index].view = &views[index];
    std::size_t parent = views.size();
    for (std::size_t depth = 0; depth < deepest; ++depth) {
      const std::vector<std::size_t>& children = nodes[parent].children;
      // Those that were put in last are the smallest.
      const auto holder = std::find_if(children.rbegin(), children.rend(), [&](std::size_t child) {
        return holds(views[child], views[index]);
      });
      if (holder == children.rend()) {
        break;
      }
      parent = *holder;
    }
    nodes[parent].children.push_back(index);
  }
  for (Node& node : nodes) {
    std::sort(node.children.begin(), node.children.end());
  }
  return nodes;
}

std::string textOf(const SnapshotElement& view) {
  std::string text = printable(view.type);
  if (view.label) {
    text += fmt::format(" \"{}\"", printable(*view.label));
  }
  if (view.identifier) {
    text += " #" + printable(*view.identifier);
  }
  return text;
}

std::string detailsOf(const SnapshotElement& view) {
  return fmt::format(" {},{} {}x{}{}", view.x, view.y, view.width, view.height,
                     view.interactive ? " touch" : "");
}

}  // namespace

std::string treeOf(const std::vector<SnapshotElement>& views, const Terminal& terminal) {
  const std::vector<Node> nodes = nodesOf(views);
  struct Level {
    const std::vector<std::size_t>* children;
    std::size_t next = 0;
  };
  std::vector<Level> path = {{&nodes.back().children}};
  std::string result;
  while (!path.empty()) {
    Level& level = path.back();
    if (level.next == level.children->size()) {
      path.pop_back();
      continue;
    }
    const Node& node = nodes[(*level.children)[level.next++]];
    std::string branches;
    // What stands at the top hangs from nothing.
    for (std::size_t depth = 1; depth < path.size(); ++depth) {
      const bool isLast = path[depth].next == path[depth].children->size();
      const bool isOwn = depth + 1 == path.size();
      branches += isOwn ? (isLast ? "└─ " : "├─ ") : (isLast ? "   " : "│  ");
    }
    std::string text = textOf(*node.view);
    const std::string details = detailsOf(*node.view);
    if (terminal.width()) {
      const std::size_t taken = displayWidth(branches) + displayWidth(details);
      constexpr std::size_t shortest = 8;
      text = cutToWidth(text,
                        std::max(shortest, *terminal.width() - std::min(taken, *terminal.width())));
    }
    result += terminal.styled(branches, Style::quiet) + text +
              terminal.styled(details, Style::quiet) + "\n";
    path.push_back({&node.children});
  }
  return result;
}

}  // namespace tarnix::companion
