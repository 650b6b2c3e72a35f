#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "probe/platform/accessibility_traits.h"
#include "probe/platform/geometry.h"

/// Reads what the host's screen says to assistive technology. Nothing is kept between calls. Main
/// thread.
namespace tarnix::ProbeAccessibilityScanner {

/// Bounds on one scan. A screen stays far below them; a tree that contains itself does not, and is
/// cut off there.
inline constexpr std::size_t maximumDepth = 16'384;
inline constexpr std::size_t maximumVisits = 1'000'000;

struct Element {
  /// Never empty.
  std::string label;
  /// One of Button, Link, Image, SearchField, Header, StaticText, Slider, TabBar and Other.
  std::string_view type;
  /// In screen coordinates.
  platform::Rect frame;
  std::optional<std::string> value;
  platform::AccessibilityTraits traits = platform::accessibility_traits::none;
  bool isButton = false;
  bool isTextField = false;

  bool operator==(const Element&) const = default;
};

/// Every labelled element of the key window, from top to bottom; elements at the same height in the
/// order of the tree. Of those that share a label and the integer part of their origin the first is
/// kept. Empty when there is no key window of the host's.
std::vector<Element> scanAll();

/// Elements whose label is `text`, or contains it when not `exact`, upper and lower case being the
/// same; in the order of `scanAll`.
std::vector<Element> find(std::string_view text, bool exact);

/// One line an element, in the order of `scanAll`: the label, and the value where that says more.
std::vector<std::string> allVisibleText();

}  // namespace tarnix::ProbeAccessibilityScanner
