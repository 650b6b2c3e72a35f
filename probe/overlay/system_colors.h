#pragma once

#include "probe/platform/drawing.h"

/// The colours that people know from the tools of their devices.
namespace tarnix::overlay::colors {

inline constexpr platform::Color white{1, 1, 1, 1};
inline constexpr platform::Color systemBlue{0, 122 / 255.0, 1, 1};
inline constexpr platform::Color systemCyan{50 / 255.0, 173 / 255.0, 230 / 255.0, 1};
inline constexpr platform::Color systemGreen{52 / 255.0, 199 / 255.0, 89 / 255.0, 1};
inline constexpr platform::Color systemOrange{1, 149 / 255.0, 0, 1};
inline constexpr platform::Color systemRed{1, 59 / 255.0, 48 / 255.0, 1};
/// Of whatever reads data.
inline constexpr platform::Color readingPurple{0.6, 0.4, 1.0, 1.0};

}  // namespace tarnix::overlay::colors
