#include "probe/link/companion_framer.h"

#include <utility>

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
    giveBack();
    if (length > 0) {
      return body;
    }
  }
  return std::nullopt;
}

void CompanionFramer::giveBack() {
  const std::size_t left = input_.size() - consumed_;
  if (input_.capacity() > keptRoom && left <= keptRoom) {
    // An assignment or erasure would leave the string the memory that it has.
    input_.substr(consumed_).swap(input_);
    consumed_ = 0;
  } else if (left == 0) {
    input_.clear();
    consumed_ = 0;
  }
}

std::optional<std::string> CompanionFramer::headerOf(std::uint64_t bodySize) {
  if (bodySize > maximumBodySize) {
    return std::nullopt;
  }
  std::string header(headerSize, '\0');
  for (std::size_t index = 0; index < headerSize; ++index) {
    header[index] = static_cast<char>(bodySize >> (8 * (headerSize - 1 - index)));
  }
  return header;
}

std::optional<std::string> CompanionFramer::handleOutput(std::string_view body) {
  if (body.size() > maximumBodySize) {
    return std::nullopt;
  }
  std::string frame;
  frame.reserve(headerSize + body.size());
  frame.assign(headerSize, '\0');
  frame.append(body);
  return finishOutput(std::move(frame));
}

std::optional<std::string> CompanionFramer::finishOutput(std::string headerAndBody) {
  const std::optional<std::string> header = headerOf(headerAndBody.size() - headerSize);
  if (!header) {
    return std::nullopt;
  }
  headerAndBody.replace(0, headerSize, *header);
  return headerAndBody;
}

}  // namespace tarnix
