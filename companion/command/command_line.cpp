#include "companion/command/command_line.h"

#include <iterator>

namespace tarnix::companion {
namespace {

/// The option of `tarnix run` whose value is a word of its own.
constexpr const char* optionWithValue = "--timeout";

using Position = std::vector<std::string>::const_iterator;

/// Where the own options behind "run" end.
Position ownEnd(Position position, Position end) {
  while (position != end && *position != "--" && position->size() > 1 && position->front() == '-') {
    const bool hasValue = *position == optionWithValue && std::next(position) != end;
    position += hasValue ? 2 : 1;
  }
  return position;
}

}  // namespace

CommandLine splitCommandLine(const std::vector<std::string>& arguments) {
  if (arguments.empty()) {
    return {};
  }
  const Position begin = std::next(arguments.begin());
  if (begin == arguments.end() || *begin != "run") {
    return {{begin, arguments.end()}, {}};
  }
  const Position cut = ownEnd(std::next(begin), arguments.end());
  const bool isMarked = cut != arguments.end() && *cut == "--";
  return {{begin, cut}, {isMarked ? std::next(cut) : cut, arguments.end()}};
}

}  // namespace tarnix::companion
