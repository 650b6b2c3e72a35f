#pragma once

#include <map>
#include <mutex>
#include <string>
#include <vector>

/// Stand-ins for the plain functions of probe/platform/diagnostics.h and probe/platform/file.h:
/// linking this library is what puts them in place.
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
};

}  // namespace tarnix::fakes
