#pragma once

#include <string>

namespace tarnix {

/// A byte string that travels as Base64, where a plain `std::string` travels as text.
struct Bytes {
  std::string data;

  bool operator==(const Bytes&) const = default;
};

}  // namespace tarnix
