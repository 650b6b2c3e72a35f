#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tarnix::companion {

/// A picture as sixels, in 256 colours and made smaller where it is wider than `widest` pixels,
/// given its PNG file; nothing where that is no PNG file, or larger than any screen.
std::optional<std::string> sixelSequence(std::string_view png, std::size_t widest);

/// Whether the terminal at these descriptors says that it takes sixels. It is asked, and waited for
/// no longer than a moment: what is typed meanwhile is lost.
bool takesSixels(int input, int output);

}  // namespace tarnix::companion
