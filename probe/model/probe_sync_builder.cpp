#include "probe/model/probe_sync_builder.h"

#include <optional>
#include <string>

#include "probe/capture/probe_screen_tracker.h"
#include "probe/model/probe_state.h"
#include "probe/platform/main_thread.h"
#include "probe/platform/platform.h"

namespace tarnix::ProbeSyncBuilder {
namespace {

std::string appName(const platform::Bundle& bundle) {
  const std::optional<std::string> displayName = bundle.infoValue("CFBundleDisplayName");
  return displayName ? *displayName : bundle.infoValue("CFBundleName").value_or("Unknown");
}

}  // namespace

OutgoingFullSync buildFullSync() {
  platform::assertMainThread();
  const platform::Platform& platform = platform::current();
  const std::string version =
      platform.bundle->infoValue("CFBundleShortVersionString").value_or("?");
  const std::string build = platform.bundle->infoValue("CFBundleVersion").value_or("?");

  // The first companion may come before the captures are installed.
  ProbeScreenTracker::install();
  OutgoingFullSync payload;
  ProbeState& state = ProbeState::shared();
  state.refreshUserDefaults();
  payload.httpRequests = state.sharedRequests();
  payload.logEntries = state.logEntries();
  payload.userDefaultsEntries = state.userDefaults();
  payload.qaState.buildNumber = build;
  payload.currentScreen = ProbeScreenTracker::lastScreenName();
  payload.deviceName = platform.device->name();
  payload.appName = appName(*platform.bundle);
  payload.appVersion = version + " (" + build + ")";
  return payload;
}

}  // namespace tarnix::ProbeSyncBuilder
