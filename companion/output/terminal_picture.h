#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tarnix::companion {

/// How a terminal takes pictures between its lines.
enum class PictureProtocol { kitty, iterm, sixel };

/// What the terminal of this process takes, as its environment tells, or as it says itself when it
/// is asked; nothing where it takes none, or where something stands between that would not hand
/// pictures on.
std::optional<PictureProtocol> pictureProtocol();

/// How much room the terminal at standard output has for a picture; nothing where it does not say.
struct PictureRoom {
  std::size_t columns = 0;
  std::size_t pixels = 0;
};
std::optional<PictureRoom> pictureRoom();

/// What shows a picture, no wider than the room, given its PNG file; nothing where it cannot be
/// shown.
std::optional<std::string> pictureSequence(PictureProtocol protocol, std::string_view png,
                                           const std::optional<PictureRoom>& room);

}  // namespace tarnix::companion
