#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tarnix {

/// Cuts a stream of bytes, in pieces of any length, into lines. Not synchronised.
class LineBuffer {
 public:
  /// What may wait for its line feed once a piece has been taken. More is let go of, as a whole,
  /// and never becomes a line.
  static constexpr std::size_t maximumPending = 65'536;

  /// The lines that `piece` completes, in order, without their line feeds. They are valid until the
  /// next call, and as long as `piece` is.
  const std::vector<std::string_view>& take(std::string_view piece);

 private:
  /// The first line of `take`, when it began in an earlier piece.
  std::string joined_;
  std::string pending_;
  std::vector<std::string_view> lines_;
};

}  // namespace tarnix
