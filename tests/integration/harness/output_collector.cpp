#include "tests/integration/harness/output_collector.h"

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <unistd.h>

#include <array>
#include <sstream>
#include <utility>

namespace tarnix::integration {
namespace {

using companion::SocketDescriptor;

std::pair<SocketDescriptor, SocketDescriptor> makePipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) {
    abort();
  }
  return {SocketDescriptor(ends[0]), SocketDescriptor(ends[1])};
}

}  // namespace

OutputCollector::OutputCollector() {
  std::tie(readEnd_, programsEnd_) = makePipe();
  std::tie(stopReadEnd_, stopWriteEnd_) = makePipe();
  thread_ = std::thread([this] { read(); });
}

OutputCollector::~OutputCollector() {
  closeProgramsEnd();
  // A descendant of the program may keep its end open.
  { const SocketDescriptor closed = std::move(stopWriteEnd_); }
  thread_.join();
}

void OutputCollector::closeProgramsEnd() {
  const SocketDescriptor closed = std::move(programsEnd_);
}

std::string OutputCollector::text() const {
  const std::lock_guard lock(mutex_);
  return text_;
}

std::vector<std::string> OutputCollector::lines() const {
  std::istringstream stream(text());
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

void OutputCollector::read() {
  std::array<pollfd, 2> sources = {pollfd{readEnd_.get(), POLLIN, 0},
                                   pollfd{stopReadEnd_.get(), POLLIN, 0}};
  std::array<char, 65'536> block{};
  while (true) {
    poll(sources.data(), sources.size(), -1);
    if (sources[0].revents == 0) {
      return;
    }
    const ssize_t count = ::read(readEnd_.get(), block.data(), block.size());
    if (count <= 0) {
      return;
    }
    const std::lock_guard lock(mutex_);
    text_.append(block.data(), static_cast<std::size_t>(count));
  }
}

}  // namespace tarnix::integration
