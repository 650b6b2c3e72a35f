#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "probe/platform/crash.h"
#include "probe/platform/file.h"
#include "probe/platform/standard_error.h"

/// Stand-ins for the plain functions of probe/platform (crash, demangle, diagnostics, file, memory,
/// png and standard_error): linking this library is what puts them in place.
namespace tarnix::fakes {

struct FakeServices {
  static FakeServices& shared();

  void reset();
  /// Only what went to standard error.
  std::string standardErrorText() const;

  mutable std::mutex mutex;
  /// In the order of the calls: "stderr: " or "system log: ", then what was written.
  std::vector<std::string> lines;
  std::vector<std::string> standardError;
  std::map<std::string, std::string> files;
  std::map<std::string, platform::FileReaders> fileReaders;
  /// What the original destination of standard error is to be.
  std::optional<int> originalDescriptor = 10;
  /// Null while standard error is not diverted.
  platform::StandardErrorObserver standardErrorObserver = nullptr;
  platform::UncaughtExceptionHandler exceptionHandler = nullptr;
  /// In the order in which they were set.
  std::vector<std::pair<int, platform::SignalHandler>> signalHandlers;
  std::vector<std::string> callStack = {"0   demo   crash + 4", "1   demo   main + 32"};
  std::optional<std::uint64_t> residentMemory = 0;
  /// What the demangler knows.
  std::map<std::string, std::string> demangledNames;
  /// What every picture is as a PNG file, in the fakes.
  std::string png;
  /// What `writeDescriptor` was called with last.
  int lastDescriptor = -1;
};

}  // namespace tarnix::fakes
