#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "probe/link/companion_message.h"

namespace tarnix {

/// The frame of a message with a long payload, in pieces: each is made when the one before it is on
/// its way, so that the whole is nowhere at any time. The bytes are those of the frame in one.
class OutgoingFrame {
 public:
  /// Of what goes into one piece before it is encoded; whole groups of Base64. Small enough to stay
  /// in a processor's second-level cache together with what becomes of it.
  static constexpr std::size_t pieceSize = 3 * 32'768;

  /// Nothing when the message has no form, or is longer than a header can say.
  static std::optional<OutgoingFrame> make(CompanionMessage message);

  /// The next bytes; empty at the end.
  std::string nextPiece();

 private:
  OutgoingFrame(CompanionMessage message, std::string beginning, std::string end);

  void takePayload();

  CompanionMessage message_;
  /// What precedes the payload and has not been handed out; and what follows it.
  std::string beginning_;
  std::string end_;
  /// How far the payload has been taken.
  std::size_t position_ = 0;
  std::size_t leftOutIndex_ = 0;
  std::size_t leftOutPosition_ = 0;
  /// Of the payload, what is encoded next.
  std::string taken_;
};

}  // namespace tarnix
