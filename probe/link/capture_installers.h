#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tarnix {

/// One capture subsystem as the server starts it.
struct CaptureInstaller {
  std::string_view subsystem;
  /// Main thread. Runs at each start of the server, so it tolerates being run again. Null: the
  /// subsystem is not built yet.
  void (*install)(const std::string& bundleIdentifier);
};

/// All of them, in the order in which they are installed.
std::span<const CaptureInstaller> captureInstallers();

}  // namespace tarnix
