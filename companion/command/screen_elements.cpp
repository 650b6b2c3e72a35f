#include "companion/command/screen_elements.h"

#include <fmt/format.h>

#include <array>
#include <charconv>
#include <optional>
#include <utility>

namespace tarnix::companion {
namespace {

/// So many of several elements are named.
constexpr std::size_t mostNamed = 5;

std::string unescaped(std::string_view text) {
  constexpr std::array<std::pair<std::string_view, char>, 4> entities = {
      {{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}}};
  std::string result;
  while (!text.empty()) {
    bool isEntity = false;
    for (const auto& [entity, character] : entities) {
      if (text.starts_with(entity)) {
        result += character;
        text.remove_prefix(entity.size());
        isEntity = true;
        break;
      }
    }
    if (!isEntity) {
      result += text.front();
      text.remove_prefix(1);
    }
  }
  return result;
}

/// What stands between `name="` and the next quote; texts inside have no quotes of their own.
std::optional<std::string_view> attribute(std::string_view tag, std::string_view name) {
  const std::string opening = fmt::format(" {}=\"", name);
  const std::size_t begin = tag.find(opening);
  if (begin == std::string_view::npos) {
    return std::nullopt;
  }
  const std::size_t end = tag.find('"', begin + opening.size());
  return end == std::string_view::npos
             ? std::nullopt
             : std::optional(tag.substr(begin + opening.size(), end - begin - opening.size()));
}

std::optional<std::int64_t> number(std::string_view text) {
  std::int64_t result = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), result);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(result)
                                                                  : std::nullopt;
}

std::optional<ScreenElement> elementIn(std::string_view line) {
  // A ">" in a text is an entity, so that the first one ends the tag.
  const std::size_t tagEnd = line.find('>');
  if (!line.starts_with('<') || tagEnd == std::string_view::npos) {
    return std::nullopt;
  }
  const std::string_view tag = line.substr(0, tagEnd);
  const std::string_view centre = attribute(tag, "c").value_or("");
  const std::size_t comma = centre.find(',');
  if (comma == std::string_view::npos) {
    return std::nullopt;
  }
  const std::optional<std::int64_t> x = number(centre.substr(0, comma));
  const std::optional<std::int64_t> y = number(centre.substr(comma + 1));
  if (!x || !y) {
    return std::nullopt;
  }
  std::string_view label = line.substr(tagEnd + 1);
  label = label.substr(0, label.rfind("</"));
  for (const char* name : {"placeholder", "label", "alt"}) {
    if (const auto named = attribute(tag, name)) {
      label = *named;
    }
  }
  return ScreenElement{unescaped(label), unescaped(attribute(tag, "v").value_or("")), *x, *y};
}

std::string listed(const std::vector<ScreenElement>& elements) {
  std::string result;
  for (std::size_t index = 0; index < elements.size() && index < mostNamed; ++index) {
    result += fmt::format("{}\"{}\" at {},{}", index == 0 ? "" : "; ", elements[index].label,
                          elements[index].x, elements[index].y);
  }
  return result + (elements.size() > mostNamed ? "; and more" : "");
}

}  // namespace

std::vector<ScreenElement> elementsIn(std::string_view html) {
  std::vector<ScreenElement> elements;
  // A label may hold line feeds: a new element begins where a line begins with a tag.
  while (!html.empty()) {
    const std::size_t next = html.find("\n<");
    if (auto element = elementIn(html.substr(0, next))) {
      elements.push_back(*std::move(element));
    }
    html.remove_prefix(next == std::string_view::npos ? html.size() : next + 1);
  }
  return elements;
}

bool showsText(const std::vector<ScreenElement>& elements, std::string_view text) {
  for (const ScreenElement& element : elements) {
    if (element.label.find(text) != std::string::npos ||
        element.value.find(text) != std::string::npos) {
      return true;
    }
  }
  return false;
}

std::variant<ScreenElement, std::string> elementLabelled(const std::vector<ScreenElement>& elements,
                                                         const std::string& text) {
  std::vector<ScreenElement> fitting;
  for (const ScreenElement& element : elements) {
    if (element.label == text) {
      fitting.push_back(element);
    }
  }
  if (fitting.empty()) {
    for (const ScreenElement& element : elements) {
      if (element.label.find(text) != std::string::npos) {
        fitting.push_back(element);
      }
    }
  }
  if (fitting.size() == 1) {
    return std::move(fitting.front());
  }
  if (fitting.empty()) {
    return fmt::format("nothing on the screen is labelled \"{}\". `tarnix html` shows what is.",
                       text);
  }
  return fmt::format("{} elements are labelled \"{}\": {}. Tap one of these points.",
                     fitting.size(), text, listed(fitting));
}

}  // namespace tarnix::companion
