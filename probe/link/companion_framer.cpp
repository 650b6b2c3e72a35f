#include "probe/link/companion_framer.h"

namespace tarnix {
namespace {

std::uint32_t bodyLength(std::string_view header) {
  std::uint32_t length = 0;
  for (const char byte : header) {
    length = length << 8 | static_cast<unsigned char>(byte);
  }
  return length;
}

}  // namespace

void CompanionFramer::handleInput(std::string_view bytes) {
  // What has been consumed is dropped once it is the larger part, so that each byte is moved a
  // bounded number of times however many frames one read brings.
  if (consumed_ > input_.size() / 2) {
    input_.erase(0, consumed_);
    consumed_ = 0;
  }
  input_.append(bytes);
}

std::optional<std::string> CompanionFramer::nextBody() {
  while (input_.size() - consumed_ >= headerSize) {
    const std::string_view unread = std::string_view(input_).substr(consumed_);
    const std::uint32_t length = bodyLength(unread.substr(0, headerSize));
    if (unread.size() - headerSize < length) {
      return std::nullopt;
    }
    std::string body(unread.substr(headerSize, length));
    consumed_ += headerSize + length;
    if (consumed_ == input_.size()) {
      // A large frame's memory goes back rather than staying with an idle connection.
      input_ = {};
      consumed_ = 0;
    }
    if (length > 0) {
      return body;
    }
  }
  return std::nullopt;
}

std::optional<std::string> CompanionFramer::handleOutput(std::string_view body) {
  if (body.size() > maximumBodySize) {
    return std::nullopt;
  }
  std::string frame;
  frame.reserve(headerSize + body.size());
  for (int shift = 24; shift >= 0; shift -= 8) {
    frame.push_back(static_cast<char>(body.size() >> shift));
  }
  frame.append(body);
  return frame;
}

}  // namespace tarnix
