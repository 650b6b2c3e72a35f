#include "companion/output/terminal.h"

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>

namespace tarnix::companion {
namespace {

std::string_view environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string_view() : std::string_view(value);
}

std::string_view escapeSequence(Style style) {
  switch (style) {
    case Style::heading:
      return "\x1b[1m";
    case Style::quiet:
      return "\x1b[2m";
    case Style::warning:
      return "\x1b[33m";
    case Style::failure:
      return "\x1b[31m";
  }
  return "";
}

}  // namespace

Terminal Terminal::standardOutput(bool colorsRefused) {
  return ofDescriptor(STDOUT_FILENO, colorsRefused);
}

Terminal Terminal::standardError(bool colorsRefused) {
  return ofDescriptor(STDERR_FILENO, colorsRefused);
}

Terminal Terminal::ofDescriptor(int descriptor, bool colorsRefused) {
  if (isatty(descriptor) == 0) {
    return {false, false, std::nullopt};
  }
  const bool hasColors =
      !colorsRefused && environment("NO_COLOR").empty() && environment("TERM") != "dumb";
  winsize size{};
  const bool isKnown = ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return {true, hasColors, isKnown ? std::optional<std::size_t>(size.ws_col) : std::nullopt};
}

std::string Terminal::styled(std::string_view text, Style style) const {
  return hasColors_ ? fmt::format("{}{}\x1b[0m", escapeSequence(style), text) : std::string(text);
}

}  // namespace tarnix::companion
