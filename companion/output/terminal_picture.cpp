#include "companion/output/terminal_picture.h"

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>

#include "companion/output/sixel_picture.h"
#include "probe/link/base64.h"

namespace tarnix::companion {
namespace {

std::string_view environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string_view() : std::string_view(value);
}

/// The width that a PNG file begins with; 0 where it is none.
std::size_t widthOf(std::string_view png) {
  constexpr std::size_t place = 16;
  constexpr std::size_t size = 4;
  if (png.size() < place + size) {
    return 0;
  }
  std::size_t width = 0;
  for (const char byte : png.substr(place, size)) {
    width = width << 8 | static_cast<unsigned char>(byte);
  }
  return width;
}

/// Pictures come in pieces, each of which says whether one more follows.
std::string kittySequence(std::string_view png, const std::optional<PictureRoom>& room) {
  constexpr std::size_t longestPiece = 4'096;
  const std::string base64 = encodeBase64(png);
  std::string_view rest = base64;
  std::string sequence;
  sequence.reserve(rest.size() + rest.size() / longestPiece * 16 + 64);
  const bool isTooWide = room && widthOf(png) > room->pixels;
  for (bool isFirst = true; isFirst || !rest.empty(); isFirst = false) {
    const std::string_view piece = rest.substr(0, longestPiece);
    rest.remove_prefix(piece.size());
    sequence += isFirst ? "\x1b_Ga=T,f=100," : "\x1b_G";
    sequence += isFirst && isTooWide ? fmt::format("c={},", room->columns) : "";
    sequence += rest.empty() ? "m=0;" : "m=1;";
    sequence += piece;
    sequence += "\x1b\\";
  }
  return sequence;
}

std::string itermSequence(std::string_view png, const std::optional<PictureRoom>& room) {
  return fmt::format("\x1b]1337;File=inline=1;preserveAspectRatio=1{}:{}\a",
                     room && widthOf(png) > room->pixels ? ";width=100%" : "", encodeBase64(png));
}

/// Something stands between that keeps what it does not know itself.
bool isWrapped() {
  return !environment("TMUX").empty() || environment("TERM").starts_with("screen");
}

std::optional<PictureProtocol> namedProtocol() {
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

}  // namespace

std::optional<PictureProtocol> pictureProtocol() {
  if (const auto named = namedProtocol(); named && !isWrapped()) {
    return named;
  }
  return takesSixels(STDIN_FILENO, STDOUT_FILENO) ? std::optional(PictureProtocol::sixel)
                                                  : std::nullopt;
}

std::optional<PictureRoom> pictureRoom() {
  winsize size{};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0 || size.ws_xpixel == 0) {
    return std::nullopt;
  }
  return PictureRoom{size.ws_col, size.ws_xpixel};
}

std::optional<std::string> pictureSequence(PictureProtocol protocol, std::string_view png,
                                           const std::optional<PictureRoom>& room) {
  switch (protocol) {
    case PictureProtocol::kitty:
      return kittySequence(png, room);
    case PictureProtocol::iterm:
      return itermSequence(png, room);
    case PictureProtocol::sixel: {
      // The width of eighty columns on most terminals.
      constexpr std::size_t usualRoom = 640;
      return sixelSequence(png, room ? room->pixels : usualRoom);
    }
  }
  return std::nullopt;
}

}  // namespace tarnix::companion
