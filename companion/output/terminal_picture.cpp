#include "companion/output/terminal_picture.h"

#include <fmt/format.h>

#include <cstdlib>

namespace tarnix::companion {
namespace {

std::string_view environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string_view() : std::string_view(value);
}

/// Pictures come in pieces, each of which says whether one more follows.
std::string kittySequence(std::string_view base64) {
  constexpr std::size_t longestPiece = 4'096;
  std::string sequence;
  sequence.reserve(base64.size() + base64.size() / longestPiece * 16 + 64);
  for (bool isFirst = true; isFirst || !base64.empty(); isFirst = false) {
    const std::string_view piece = base64.substr(0, longestPiece);
    base64.remove_prefix(piece.size());
    sequence += isFirst ? "\x1b_Ga=T,f=100,m=" : "\x1b_Gm=";
    sequence += base64.empty() ? '0' : '1';
    sequence += ';';
    sequence += piece;
    sequence += "\x1b\\";
  }
  return sequence;
}

std::string itermSequence(std::string_view base64) {
  return fmt::format("\x1b]1337;File=inline=1;preserveAspectRatio=1:{}\a", base64);
}

}  // namespace

std::optional<PictureProtocol> pictureProtocol() {
  if (!environment("TMUX").empty() || environment("TERM").starts_with("screen")) {
    return std::nullopt;
  }
  const std::string_view program = environment("TERM_PROGRAM");
  if (!environment("KITTY_WINDOW_ID").empty() || environment("TERM") == "xterm-kitty" ||
      environment("TERM") == "xterm-ghostty" || !environment("KONSOLE_VERSION").empty()) {
    return PictureProtocol::kitty;
  }
  if (program == "iTerm.app" || program == "WezTerm" || program == "mintty" ||
      environment("LC_TERMINAL") == "iTerm2") {
    return PictureProtocol::iterm;
  }
  return std::nullopt;
}

std::string pictureSequence(PictureProtocol protocol, std::string_view base64Png) {
  return protocol == PictureProtocol::kitty ? kittySequence(base64Png) : itermSequence(base64Png);
}

}  // namespace tarnix::companion
