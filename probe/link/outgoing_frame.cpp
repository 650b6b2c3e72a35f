#include "probe/link/outgoing_frame.h"

#include <algorithm>
#include <utility>

#include "probe/link/base64.h"
#include "probe/link/companion_framer.h"

namespace tarnix {
namespace {

constexpr std::size_t base64Group = 3;

}  // namespace

std::optional<OutgoingFrame> OutgoingFrame::make(CompanionMessage message) {
  // The envelope around nothing, cut open where the payload belongs.
  constexpr std::string_view opening = "\"payload\":\"";
  const std::optional<std::string> envelope =
      CompanionMessage{message.type, "", message.timestamp}.encodeEnvelope();
  const std::size_t place = envelope ? envelope->find(opening) : std::string::npos;
  if (place == std::string::npos || message.longPayload == nullptr) {
    return std::nullopt;
  }
  const std::size_t cut = place + opening.size();
  std::optional<std::string> header =
      CompanionFramer::headerOf(envelope->size() + base64Size(message.longPayload->size()));
  if (!header) {
    return std::nullopt;
  }
  return OutgoingFrame(std::move(message), *std::move(header) + envelope->substr(0, cut),
                       envelope->substr(cut));
}

OutgoingFrame::OutgoingFrame(CompanionMessage message, std::string beginning, std::string end)
    : message_(std::move(message)), beginning_(std::move(beginning)), end_(std::move(end)) {}

std::string OutgoingFrame::nextPiece() {
  takePayload();
  std::string piece = std::exchange(beginning_, {});
  const bool isLast = taken_.size() < pieceSize;
  // What is no whole group yet waits for more.
  const std::size_t rest = isLast ? 0 : taken_.size() % base64Group;
  const std::string_view ready = std::string_view(taken_).substr(0, taken_.size() - rest);
  piece.reserve(piece.size() + base64Size(ready.size()) + end_.size());
  appendBase64(ready, piece);
  taken_.erase(0, ready.size());
  if (isLast) {
    piece += std::exchange(end_, {});
  }
  return piece;
}

/// Until there is enough for one piece, or no more.
void OutgoingFrame::takePayload() {
  const JsonText& payload = *message_.longPayload;
  taken_.reserve(pieceSize + base64Group + 1);
  while (taken_.size() < pieceSize) {
    const bool isWhole = leftOutIndex_ == payload.leftOut.size();
    const std::size_t textEnd =
        isWhole ? payload.text.size() : payload.leftOut[leftOutIndex_].position;
    if (position_ < textEnd) {
      const std::size_t count = std::min(textEnd - position_, pieceSize - taken_.size());
      taken_.append(payload.text, position_, count);
      position_ += count;
      continue;
    }
    if (isWhole) {
      return;
    }
    const std::string_view bytes = payload.leftOut[leftOutIndex_].bytes.substr(leftOutPosition_);
    // Whole groups, so that what follows can be encoded by itself.
    const std::size_t room = (pieceSize - taken_.size() + 3) / 4 * base64Group;
    const std::size_t count = std::min(bytes.size(), room);
    appendBase64(bytes.substr(0, count), taken_);
    leftOutPosition_ += count;
    if (count == bytes.size()) {
      ++leftOutIndex_;
      leftOutPosition_ = 0;
    }
  }
}

}  // namespace tarnix
