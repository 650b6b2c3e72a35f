#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarnix::companion {

/// How a terminal takes pictures between its lines.
enum class PictureProtocol { kitty, iterm };

/// What the terminal of this process takes, as its environment tells; nothing where it takes none,
/// or where something stands between that would not hand pictures on.
std::optional<PictureProtocol> pictureProtocol();

/// What shows a picture, given the Base64 of its PNG file.
std::string pictureSequence(PictureProtocol protocol, std::string_view base64Png);

}  // namespace tarnix::companion
