#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "probe/platform/input_stream.h"

namespace tarnix::fakes {

/// Gives what the test put in, and writes down how it was read.
class FakeInputStream : public platform::InputStream {
 public:
  explicit FakeInputStream(std::string bytes) : rest(std::move(bytes)) {}

  void open() override { ++opens; }
  void close() override { ++closes; }
  bool hasBytesAvailable() override { return promisesMore || !rest.empty(); }
  std::ptrdiff_t read(std::span<char> buffer) override {
    wanted.push_back(buffer.size());
    if (readsUntilFailure == 0) {
      return -1;
    }
    --readsUntilFailure;
    const std::size_t count = std::min({buffer.size(), rest.size(), largestRead});
    std::copy_n(rest.data(), count, buffer.data());
    rest.erase(0, count);
    return static_cast<std::ptrdiff_t>(count);
  }

  std::string rest;
  std::size_t largestRead = 1 << 20;
  int readsUntilFailure = -1;
  /// Says that there are bytes when there are none.
  bool promisesMore = false;
  int opens = 0;
  int closes = 0;
  /// The size of the buffer of each read.
  std::vector<std::size_t> wanted;
};

}  // namespace tarnix::fakes
