#pragma once

#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "tests/companion/socket_descriptor.h"

namespace tarnix::integration {

/// Reads a stream of a program on a thread of its own, so that the program never waits for it.
class OutputCollector {
 public:
  OutputCollector();
  ~OutputCollector();
  OutputCollector(const OutputCollector&) = delete;
  OutputCollector& operator=(const OutputCollector&) = delete;

  /// What the program writes to; `closeProgramsEnd` once it has it.
  int programsEnd() const { return programsEnd_.get(); }
  void closeProgramsEnd();

  std::string text() const;
  /// Without their line feeds.
  std::vector<std::string> lines() const;

 private:
  void read();

  companion::SocketDescriptor readEnd_;
  companion::SocketDescriptor programsEnd_;
  companion::SocketDescriptor stopReadEnd_;
  companion::SocketDescriptor stopWriteEnd_;
  mutable std::mutex mutex_;
  std::string text_;
  std::thread thread_;
};

}  // namespace tarnix::integration
