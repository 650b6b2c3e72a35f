#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "probe/link/record.h"

namespace tarnix {

/// A universally unique identifier. Travels in the canonical 36-character form: written in upper
/// case, read in either.
class Uuid {
 public:
  /// The nil identifier, all zeroes.
  Uuid() = default;

  /// A new random identifier (RFC 4122 version 4). Any thread.
  static Uuid random();

  static std::optional<Uuid> parse(std::string_view text);
  std::string toString() const;

  auto operator<=>(const Uuid&) const = default;

 private:
  std::array<std::uint8_t, 16> bytes_{};
};

template <>
struct StringCoding<Uuid> {
  static std::string toString(const Uuid& uuid) { return uuid.toString(); }
  static std::optional<Uuid> fromString(std::string_view text) { return Uuid::parse(text); }
};

}  // namespace tarnix
