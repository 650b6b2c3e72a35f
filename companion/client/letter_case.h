#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace tarnix::companion {

/// Of ASCII only, in any locale: what host names, methods and names of executables are made of.
inline char lowerCase(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

inline std::string lowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char letter) { return lowerCase(letter); });
  return text;
}

inline bool isSameLetter(char one, char other) { return lowerCase(one) == lowerCase(other); }

/// Any text contains an empty one.
inline bool containsInAnyCase(std::string_view text, std::string_view part) {
  return part.empty() || std::search(text.begin(), text.end(), part.begin(), part.end(),
                                     isSameLetter) != text.end();
}

}  // namespace tarnix::companion
