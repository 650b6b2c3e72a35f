#include "probe/inspect/probe_accessibility_scanner.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

#include "probe/inspect/accessibility_walk.h"
#include "probe/inspect/arrangement.h"
#include "probe/inspect/class_name.h"
#include "probe/inspect/truncation.h"
#include "probe/platform/main_thread.h"
#include "probe/platform/platform.h"
#include "probe/platform/text.h"

namespace tarnix::ProbeAccessibilityScanner {
namespace {

std::shared_ptr<platform::Window> keyWindow() {
  for (const auto& scene : platform::current().application->connectedScenes()) {
    for (auto& window : scene->windows()) {
      if (!isProbeClass(window->className()) && window->isKeyWindow()) {
        return std::move(window);
      }
    }
  }
  return nullptr;
}

/// The same label and integer origin.
struct LabelAndOrigin {
  static std::size_t hash(const Element& element) {
    // Odd multipliers spread neighbouring coordinates; the label's own hash does the rest.
    const auto x = static_cast<std::uint64_t>(truncatedTowardZero(element.frame.minX()));
    const auto y = static_cast<std::uint64_t>(truncatedTowardZero(element.frame.minY()));
    const std::uint64_t origin = x * 0x9E37'79B9'7F4A'7C15 + y * 0xC2B2'AE3D'27D4'EB4F;
    return std::hash<std::string>{}(element.label) ^ static_cast<std::size_t>(origin >> 17);
  }

  static bool isSame(const Element& left, const Element& right) {
    return truncatedTowardZero(left.frame.minX()) == truncatedTowardZero(right.frame.minX()) &&
           truncatedTowardZero(left.frame.minY()) == truncatedTowardZero(right.frame.minY()) &&
           left.label == right.label;
  }
};

}  // namespace

std::vector<Element> scanAll() {
  platform::assertMainThread();
  std::vector<Element> elements;
  if (std::shared_ptr<platform::Window> window = keyWindow()) {
    AccessibilityWalk(elements).scanAccessibilityTree(std::move(window));
  }
  return distinctFromTopToBottom<LabelAndOrigin>(std::move(elements));
}

std::vector<Element> find(std::string_view text, bool exact) {
  const std::string query = platform::lowercased(text);
  std::vector<Element> elements = scanAll();
  std::erase_if(elements, [&](const Element& element) {
    const std::string label = platform::lowercased(element.label);
    return exact ? label != query : label.find(query) == std::string::npos;
  });
  return elements;
}

std::vector<std::string> allVisibleText() {
  std::vector<Element> elements = scanAll();
  std::vector<std::string> lines;
  lines.reserve(elements.size());
  for (Element& element : elements) {
    std::string line = std::move(element.label);
    if (element.value && !element.value->empty() && *element.value != line) {
      line += ": " + *element.value;
    }
    lines.push_back(std::move(line));
  }
  return lines;
}

}  // namespace tarnix::ProbeAccessibilityScanner
