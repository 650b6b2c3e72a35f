#include "probe/capture/line_buffer.h"

namespace tarnix {

const std::vector<std::string_view>& LineBuffer::take(std::string_view piece) {
  lines_.clear();
  joined_.clear();
  std::size_t begin = 0;
  for (std::size_t end = piece.find('\n'); end != std::string_view::npos;
       end = piece.find('\n', begin)) {
    const std::string_view line = piece.substr(begin, end - begin);
    begin = end + 1;
    if (pending_.empty()) {
      lines_.push_back(line);
      continue;
    }
    joined_.swap(pending_);
    joined_ += line;
    lines_.emplace_back(joined_);
  }
  pending_ += piece.substr(begin);
  if (pending_.size() > maximumPending) {
    pending_.clear();
  }
  return lines_;
}

}  // namespace tarnix
