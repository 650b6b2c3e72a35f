#pragma once

#include <cstdint>

namespace tarnix::platform {

/// What assistive technology is told an item is: a set of bits.
using AccessibilityTraits = std::uint64_t;

namespace accessibility_traits {

inline constexpr AccessibilityTraits none = 0;
inline constexpr AccessibilityTraits button = 1ULL << 0;
inline constexpr AccessibilityTraits link = 1ULL << 1;
inline constexpr AccessibilityTraits image = 1ULL << 2;
inline constexpr AccessibilityTraits selected = 1ULL << 3;
inline constexpr AccessibilityTraits staticText = 1ULL << 6;
inline constexpr AccessibilityTraits notEnabled = 1ULL << 8;
inline constexpr AccessibilityTraits searchField = 1ULL << 10;
inline constexpr AccessibilityTraits adjustable = 1ULL << 12;
inline constexpr AccessibilityTraits header = 1ULL << 16;
inline constexpr AccessibilityTraits tabBar = 1ULL << 28;

}  // namespace accessibility_traits
}  // namespace tarnix::platform
