#include "probe/capture/screen_name.h"

#include <array>
#include <cstddef>

#include "probe/model/utf8.h"
#include "probe/platform/characters.h"
#include "probe/platform/demangle.h"
#include "probe/platform/text.h"

namespace tarnix {
namespace {

constexpr std::string_view hostingController = "UIHostingController";
constexpr std::string_view nameOfLastResort = "SwiftUI View";
constexpr std::string_view mangledPrefix = "_Tt";

// The first that fits and leaves something is taken off; in this order, so that a longer ending
// goes as a whole.
constexpr std::array<std::string_view, 4> endings = {"ViewController", "Controller", "Screen",
                                                     "VC"};

std::string_view withoutEnding(std::string_view className) {
  for (const std::string_view ending : endings) {
    if (className.ends_with(ending) && className.size() > ending.size()) {
      return className.substr(0, className.size() - ending.size());
    }
  }
  return className;
}

char32_t firstCodePoint(std::string_view character) {
  std::size_t position = 0;
  return utf8::next(character, position);
}

/// "UserProfile" as "User Profile". A run of capitals stays as it is.
std::string inWords(std::string_view name) {
  std::string words;
  bool followsLowerCase = false;
  while (!name.empty()) {
    const std::string_view character = platform::firstCharacters(name, 1);
    const char32_t base = firstCodePoint(character);
    if (followsLowerCase && platform::isUpperCase(base)) {
      words += ' ';
    }
    words += character;
    followsLowerCase = platform::isLowerCase(base);
    name.remove_prefix(character.size());
  }
  return words;
}

std::string afterLastDot(std::string_view name) {
  return std::string(name.substr(name.rfind('.') + 1));
}

/// What stands between two brackets; nothing when either is missing or they stand the wrong way
/// round.
std::optional<std::string> viewBetween(std::string_view name, std::size_t opening,
                                       std::size_t closing) {
  if (opening == std::string_view::npos || closing == std::string_view::npos || closing < opening) {
    return std::nullopt;
  }
  return afterLastDot(name.substr(opening + 1, closing - opening - 1));
}

}  // namespace

std::string humanReadableName(const platform::ViewController& controller) {
  const std::string className = utf8::wellFormed(controller.className());
  if (className.find(hostingController) != std::string::npos) {
    const std::optional<std::string> title = controller.title();
    if (title && !title->empty()) {
      return *title;
    }
    return extractHostedViewName(className).value_or(std::string(nameOfLastResort));
  }
  const std::string name = inWords(withoutEnding(className));
  return name.empty() ? className : name;
}

std::optional<std::string> extractHostedViewName(const std::string& className) {
  const std::size_t opening = className.find('<');
  const std::size_t closing = className.rfind('>');
  if (opening != std::string::npos && closing != std::string::npos) {
    return viewBetween(className, opening, closing);
  }
  return className.starts_with(mangledPrefix) ? demangleAndExtract(className) : std::nullopt;
}

std::optional<std::string> demangleAndExtract(const std::string& mangledName) {
  const std::optional<std::string> name = platform::demangled(mangledName);
  return name ? viewBetween(*name, name->rfind('<'), name->rfind('>')) : std::nullopt;
}

}  // namespace tarnix
