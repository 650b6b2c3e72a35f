#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "companion/client/outcome.h"

namespace tarnix::companion {

/// One line of the screen's document.
struct ScreenElement {
  /// As a person reads it; the document cuts long ones and ends them with "...".
  std::string label;
  /// Empty where the element has none.
  std::string value;
  /// Where to tap it.
  std::int64_t x = 0;
  std::int64_t y = 0;

  bool operator==(const ScreenElement&) const = default;
};

/// The elements of a document as the probe writes it; lines that are none are passed over.
std::vector<ScreenElement> elementsIn(std::string_view html);

/// Whether the document has `text` in a label or a value.
bool showsText(const std::vector<ScreenElement>& elements, std::string_view text);

/// The one element whose label is `text`; where there is none, the one whose label contains it.
/// Otherwise, for people, why there is no such one.
std::variant<ScreenElement, std::string> elementLabelled(const std::vector<ScreenElement>& elements,
                                                         const std::string& text);

}  // namespace tarnix::companion
