#include "probe/capture/probe_screen_tracker.h"

#include <utility>

#include "probe/platform/main_thread.h"

namespace tarnix::ProbeScreenTracker {
namespace {

std::string& holder() {
  static std::string& name = *new std::string("Unknown");
  return name;
}

}  // namespace

const std::string& lastScreenName() {
  platform::assertMainThread();
  return holder();
}

void setLastScreenName(std::string name) {
  platform::assertMainThread();
  holder() = std::move(name);
}

}  // namespace tarnix::ProbeScreenTracker
