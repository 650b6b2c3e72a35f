#include <algorithm>
#include <string>
#include <vector>

#include "probe/link/companion_framer.h"
#include "tests/fuzz/fuzz_check.h"

using namespace tarnix;

namespace {

std::vector<std::string> bodiesOf(std::string_view stream, std::size_t readSize) {
  CompanionFramer framer;
  std::vector<std::string> bodies;
  while (!stream.empty()) {
    framer.handleInput(stream.substr(0, readSize));
    stream.remove_prefix(std::min(readSize, stream.size()));
    while (std::optional<std::string> body = framer.nextBody()) {
      bodies.push_back(*std::move(body));
    }
  }
  return bodies;
}

}  // namespace

/// However a stream is cut into reads, the same bodies come out of it, and they go back into frames
/// that stand in the stream. The first byte of the input is the size of the reads.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  const std::string_view stream = fuzz::textOf(data, size).substr(1);
  const std::size_t readSize = std::size_t{data[0]} + 1;
  const std::vector<std::string> bodies = bodiesOf(stream, stream.size());
  fuzz::demand(bodiesOf(stream, readSize) == bodies);
  std::size_t place = 0;
  for (const std::string& body : bodies) {
    fuzz::demand(!body.empty());
    place = stream.find(CompanionFramer::handleOutput(body).value(), place);
    fuzz::demand(place != std::string_view::npos);
    place += CompanionFramer::headerSize + body.size();
  }
  return 0;
}
