#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "probe/link/base64.h"

namespace tarnix {

/// JSON text whose long byte strings are not in it: what was left out, and where. A full sync is
/// tens of megabytes, nearly all of it Base64 of bodies; like this it is made in no time, takes
/// next to no memory, and is written piece by piece while it is sent.
struct JsonText {
  /// What is shorter is not worth the trouble.
  static constexpr std::size_t shortestLeftOut = 1'024;

  /// Bytes whose Base64 belongs before `text[position]`.
  struct LeftOut {
    std::size_t position;
    std::string_view bytes;
  };

  std::string text;
  /// By position.
  std::vector<LeftOut> leftOut;
  /// Holds the bytes.
  std::shared_ptr<const void> owner;

  /// Of the whole, with what was left out.
  std::size_t size() const {
    std::size_t size = text.size();
    for (const LeftOut& part : leftOut) {
      size += base64Size(part.bytes.size());
    }
    return size;
  }
};

}  // namespace tarnix
