#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "probe/inspect/probe_accessibility_scanner.h"

/// The screen as a compact text that reads like HTML, for people and for programs that reason about
/// screens: one line an element, with a running number, the point to tap it at, its label, and the
/// value of what has one to change. The text is a format of its own: tags, attributes, their order
/// and quoting are what companions rely on. Any thread.
namespace tarnix::ScreenHTMLRenderer {

std::string render(std::string_view screenName,
                   const std::vector<ProbeAccessibilityScanner::Element>& elements);

}  // namespace tarnix::ScreenHTMLRenderer
