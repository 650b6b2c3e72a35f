#include "probe/overlay/probe_tool_category.h"

#include <array>
#include <cstddef>

#include "probe/overlay/system_colors.h"

namespace tarnix {

namespace {

struct Tool {
  std::string_view label;
  std::string_view icon;
  platform::Color color;
};

// In the order of the categories.
constexpr std::array<Tool, 6> tools = {{
    {"INPUT", "\u25C9", overlay::colors::systemBlue},
    {"SCANNING", "\u29D6", overlay::colors::systemCyan},
    {"CAPTURE", "\u25CE", overlay::colors::white},
    {"READING", "\u2261", overlay::colors::readingPurple},
    {"VERIFYING", "\u2713", overlay::colors::systemGreen},
    {"ENV", "\u21C4", overlay::colors::systemOrange},
}};

const Tool& toolOf(ProbeToolCategory category) { return tools[static_cast<std::size_t>(category)]; }

}  // namespace

std::string_view label(ProbeToolCategory category) { return toolOf(category).label; }
std::string_view icon(ProbeToolCategory category) { return toolOf(category).icon; }
platform::Color color(ProbeToolCategory category) { return toolOf(category).color; }

}  // namespace tarnix
