#include "probe/capture/probe_screen_tracker.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "probe/capture/probelog.h"
#include "probe/capture/screen_name.h"
#include "probe/model/probe_state.h"
#include "probe/platform/main_thread.h"
#include "probe/platform/platform.h"

namespace tarnix::ProbeScreenTracker {
namespace {

constexpr std::array<std::string_view, 10> ignoredVCTypes = {
    "UINavigationController",
    "UITabBarController",
    "UISplitViewController",
    "UIPageViewController",
    "UIAlertController",
    "UIInputWindowController",
    "UICompatibilityInputViewController",
    "UISystemInputAssistantViewController",
    "UIEditingOverlayViewController",
    "_UIContextMenuActionsOnlyViewController",
};

bool contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

bool isIgnoredClass(std::string_view className) {
  return std::find(ignoredVCTypes.begin(), ignoredVCTypes.end(), className) !=
             ignoredVCTypes.end() ||
         className.starts_with('_') || contains(className, "Tarnix") ||
         contains(className, "Probe");
}

/// A hosting controller is the toolkit's own class too, around a view of the application's.
bool isFrameworkClass(std::string_view className, const platform::ViewController& controller) {
  if (className.starts_with("UIHostingController")) {
    return false;
  }
  const std::string path = controller.bundlePath();
  return contains(path, "/System/") || contains(path, "/usr/lib/");
}

void noteAppearance(const platform::ViewController& controller) {
  const std::string className = controller.className();
  if (isIgnoredClass(className) || isFrameworkClass(className, controller)) {
    return;
  }
  std::string name = humanReadableName(controller);
  ProbeState::shared().setScreen(name);
  setLastScreenName(std::move(name));
}

std::string& holder() {
  static std::string& name = *new std::string("Unknown");
  return name;
}

}  // namespace

void install() {
  platform::assertMainThread();
  if (detail::installed) {
    return;
  }
  detail::installed = true;
  platform::ViewDidAppear* const viewDidAppear = platform::current().viewDidAppear;
  if (viewDidAppear == nullptr) {
    probelog("[TarnixProbe] ScreenTracker: failed to find viewDidAppear\n");
    return;
  }
  viewDidAppear->setImplementation([original = viewDidAppear->implementation()](
                                       platform::ViewController& controller, bool animated) {
    original(controller, animated);
    try {
      noteAppearance(controller);
    } catch (...) {
      // Out of memory: the name stays that of the screen before.
    }
  });
  probelog("[TarnixProbe] ScreenTracker installed\n");
}

const std::string& lastScreenName() {
  platform::assertMainThread();
  return holder();
}

void setLastScreenName(std::string name) {
  platform::assertMainThread();
  holder() = std::move(name);
}

}  // namespace tarnix::ProbeScreenTracker
