#pragma once

#include <string>
#include <string_view>

namespace tarnix {

/// A byte string that travels as Base64, where a plain `std::string` travels as text.
struct Bytes {
  std::string data;

  bool operator==(const Bytes&) const = default;
};

/// The same, looked at where it lies. Written only.
struct BytesView {
  std::string_view data;
};

}  // namespace tarnix
