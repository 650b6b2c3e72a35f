#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "probe/platform/standard_error.h"

/// Stand-ins for the plain functions of probe/platform/diagnostics.h, probe/platform/file.h and
/// probe/platform/standard_error.h: linking this library is what puts them in place.
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
  /// What the original destination of standard error is to be.
  std::optional<int> originalDescriptor = 10;
  /// Null while standard error is not diverted.
  platform::StandardErrorObserver standardErrorObserver = nullptr;
  /// What `writeDescriptor` was called with last.
  int lastDescriptor = -1;
};

}  // namespace tarnix::fakes
