#pragma once

#include <string_view>

namespace tarnix {

/// A qualified class name without what stands before its last dot; dots inside generic arguments do
/// not count.
constexpr std::string_view unqualifiedClassName(std::string_view name) {
  const std::string_view beforeArguments = name.substr(0, name.find('<'));
  const std::size_t dot = beforeArguments.rfind('.');
  return dot == std::string_view::npos ? name : name.substr(dot + 1);
}

/// Whether a class is the probe's own, such as its overlay: told by the unqualified name, so that a
/// host may have a name space of that name.
constexpr bool isProbeClass(std::string_view name) {
  const auto bearsName = [](std::string_view text) {
    return text.find("Tarnix") != std::string_view::npos ||
           text.find("Probe") != std::string_view::npos;
  };
  // Asked of every view of a screen.
  return bearsName(name) && bearsName(unqualifiedClassName(name));
}

}  // namespace tarnix
