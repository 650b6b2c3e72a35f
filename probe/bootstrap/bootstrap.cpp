#include "probe/bootstrap/bootstrap.h"

#include <chrono>
#include <string>

#include "probe/capture/probe_web_view_console_capture.h"
#include "probe/link/probe_server.h"
#include "probe/platform/diagnostics.h"
#include "probe/platform/platform.h"

namespace tarnix {
namespace {

// Long enough for the host to have set itself up, short enough to see its first screen.
constexpr std::chrono::milliseconds serverStartDelay{500};
constexpr const char* launchNotification = "UIApplicationDidFinishLaunchingNotification";
constexpr const char* fullSdkClass = "Tarnix.CompanionServer";

void writeLine(const std::string& line) {
  platform::writeStandardError(line + "\n");
  platform::writeSystemLog(line);
}

/// Nothing that goes wrong in here is worth the host's life.
template <class Work>
void contain(Work work) noexcept {
  try {
    work();
  } catch (...) {
  }
}

void startServer(const std::string& identifier) {
  ProbeServer::shared().start();
  writeLine("[TarnixProbe] Server started for " + identifier);
}

}  // namespace

void tarnixprobe_bootstrap(const char* reason) noexcept {
  if (detail::tarnixprobe_loaded) {
    return;
  }
  detail::tarnixprobe_loaded = true;
  contain([reason] {
    writeLine(std::string("[TarnixProbe] Bootstrap fired (") + reason + ")");
    // One reason for every way in: this line tells the run at load time from the one at launch.
    tarnixprobe_run_swift_bootstrap("sync from +load");
    // A host in which the start at load time did not take gets a second one.
    platform::current().notificationCenter->addObserver(
        launchNotification, [] { tarnixprobe_run_swift_bootstrap("UIApplication launch"); });
  });
}

void tarnixprobe_run_swift_bootstrap(const char* reason) noexcept {
  contain([reason] {
    writeLine(std::string("[TarnixProbe] About to call Swift bootstrap (") + reason + ")");
    TarnixProbeBootstrap();
    writeLine(std::string("[TarnixProbe] Swift bootstrap returned (") + reason + ").");
  });
}

void TarnixProbeBootstrap() noexcept {
  contain([] {
    const platform::Platform& platform = platform::current();
    writeLine("[TarnixProbe] Swift entry reached");
    if (platform.classRegistry->hasClass(fullSdkClass)) {
      platform::writeStandardError("[TarnixProbe] Real Tarnix SDK detected — skipping probe.\n");
      return;
    }
    const std::string identifier = platform.bundle->bundleIdentifier().value_or("unknown");
    writeLine("[TarnixProbe] Injected into " + identifier);
    // A page that is there from the start has run its first scripts before the server starts.
    ProbeWebViewConsoleCapture::exchangeInitialisers();
    platform.mainQueue->asyncAfter(
        serverStartDelay, [identifier] { contain([&identifier] { startServer(identifier); }); });
  });
}

}  // namespace tarnix
