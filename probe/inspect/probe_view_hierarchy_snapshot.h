#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "probe/platform/geometry.h"

/// Lists the views of the key window that bear a label or an identifier or react to touch. Nothing
/// is kept between calls. Main thread.
namespace tarnix::ProbeViewHierarchySnapshot {

/// Bounds on one walk, for a tree that contains itself.
inline constexpr std::size_t maximumDepth = 16'384;
inline constexpr std::size_t maximumVisits = 1'000'000;

/// A view at this opacity or below is passed over with everything in it.
inline constexpr double largestInvisibleAlpha = 0.01;

/// A view without label and identifier is listed only when it is wider and higher than this, in
/// device-independent pixels.
inline constexpr double smallestUnnamedSide = 10;

struct Element {
  /// An empty one is there, too.
  std::optional<std::string> label;
  std::optional<std::string> identifier;
  /// One of Button, Label, TextField, TextView, Switch, Slider, Image and Cell, else the view's
  /// class.
  std::string type;
  /// The whole view in the window, whatever of it can be seen.
  platform::Rect frame;
  bool isInteractive = false;

  bool operator==(const Element&) const = default;
};

/// From top to bottom; views at the same height in the order of the tree, parents first. Of views
/// with the same label and frame the first is listed. Empty when there is no key window.
std::vector<Element> capture();

}  // namespace tarnix::ProbeViewHierarchySnapshot
