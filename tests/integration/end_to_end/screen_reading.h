#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "companion/client/companion_client.h"
#include "probe/model/screen_html_response.h"

namespace tarnix::integration {

/// One line of a screen's HTML, as far as tests look at it.
struct ScreenElement {
  std::string tag;
  int id = 0;
  int centerX = 0;
  int centerY = 0;
  /// Still escaped.
  std::string label;
};

/// The screen of the host on that port, over a connection of its own; a failure of the test when
/// there is none.
std::optional<ScreenHTMLResponse> readScreen(std::uint16_t port);

/// The lines of a document; a line that has not the form of one is a failure of the test.
std::vector<ScreenElement> parseScreen(const std::string& html);

std::optional<ScreenElement> elementWithLabel(const std::vector<ScreenElement>& elements,
                                              const std::string& label);

}  // namespace tarnix::integration
