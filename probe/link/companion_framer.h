#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarnix {

/// Cuts a byte stream into message bodies and puts bodies into frames. It does no input or output
/// of its own and never looks inside a body.
///
///     offset 0   4 bytes   body length, unsigned, big-endian
///     offset 4   length    body
///
/// Frames follow each other without separator. A frame of length 0 is consumed without a trace.
/// One instance serves one stream, on one thread.
class CompanionFramer {
 public:
  static constexpr std::size_t headerSize = 4;
  /// What four bytes can announce; no smaller bound applies.
  static constexpr std::uint64_t maximumBodySize = 0xFFFF'FFFF;

  /// Takes the next bytes of the stream, cut anywhere.
  void handleInput(std::string_view bytes);

  /// The next whole body, in order; nothing when more input is needed. Memory grows with what has
  /// arrived, never with what a header announces.
  std::optional<std::string> nextBody();

  /// The memory in bytes that is held for input. A large frame's goes back with its body, rather
  /// than staying with a connection for as long as that lasts.
  std::size_t room() const { return input_.capacity(); }

  /// The header alone; nothing when a body of that size is larger than a header can say.
  static std::optional<std::string> headerOf(std::uint64_t bodySize);

  /// Header and body, ready to be written; nothing when the body is larger than a header can say.
  static std::optional<std::string> handleOutput(std::string_view body);

  /// The same for a body that is written to where it goes: room for the header, behind which the
  /// body is put, and then the frame made of both.
  static std::string roomForHeader() { return std::string(headerSize, '\0'); }
  static std::optional<std::string> finishOutput(std::string headerAndBody);

 private:
  /// What ordinary frames go through without memory being asked for.
  static constexpr std::size_t keptRoom = 65'536;

  void giveBack();

  std::string input_;
  std::size_t consumed_ = 0;
};

}  // namespace tarnix
