#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tarnix::companion {

/// How text is set off from other text.
enum class Style { heading, quiet, warning, failure };

/// What is known of an output stream: whether people look at it, and how wide it is.
class Terminal {
 public:
  /// Of standard output. Colours need a terminal and a user who does not refuse them, by
  /// `colorsRefused`, the variable NO_COLOR or a terminal of type "dumb".
  static Terminal standardOutput(bool colorsRefused);
  static Terminal standardError(bool colorsRefused);

  Terminal(bool isTerminal, bool hasColors, std::optional<std::size_t> width)
      : isTerminal_(isTerminal), hasColors_(hasColors), width_(width) {}

  bool isTerminal() const { return isTerminal_; }

  /// In columns; nothing where lines may be as long as they like.
  std::optional<std::size_t> width() const { return width_; }

  std::string styled(std::string_view text, Style style) const;

 private:
  static Terminal ofDescriptor(int descriptor, bool colorsRefused);

  bool isTerminal_;
  bool hasColors_;
  std::optional<std::size_t> width_;
};

}  // namespace tarnix::companion
