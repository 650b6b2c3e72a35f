#pragma once

#include "probe/platform/platform.h"
#include "tests/fakes/fake_application.h"
#include "tests/fakes/fake_bundle.h"
#include "tests/fakes/fake_class_registry.h"
#include "tests/fakes/fake_clock.h"
#include "tests/fakes/fake_device.h"
#include "tests/fakes/fake_display.h"
#include "tests/fakes/fake_main_queue.h"
#include "tests/fakes/fake_network.h"
#include "tests/fakes/fake_notification_center.h"
#include "tests/fakes/fake_overlay_surfaces.h"
#include "tests/fakes/fake_url_loading.h"
#include "tests/fakes/fake_url_opener.h"
#include "tests/fakes/fake_user_defaults.h"
#include "tests/fakes/fake_web_view.h"

namespace tarnix::fakes {

/// A whole world, in force while it lives.
class FakePlatform {
 public:
  FakePlatform() {
    platform::setCurrent({.application = &application,
                          .bundle = &bundle,
                          .classRegistry = &classRegistry,
                          .clock = &clock,
                          .device = &device,
                          .display = &display,
                          .mainQueue = &mainQueue,
                          .network = &network,
                          .notificationCenter = &notificationCenter,
                          .overlaySurfaces = &overlaySurfaces,
                          .urlLoading = &urlLoading,
                          .urlOpener = &urlOpener,
                          .userDefaults = &userDefaults,
                          .viewDidAppear = &viewDidAppear,
                          .webViewClass = &webViewClass});
  }
  FakePlatform(const FakePlatform&) = delete;
  FakePlatform& operator=(const FakePlatform&) = delete;
  ~FakePlatform() { platform::setCurrent({}); }

  /// Lets the network's queue and the main queue run until neither has anything to do. No virtual
  /// time passes.
  void settle() {
    bool anyRan = true;
    while (anyRan) {
      anyRan = network.serialQueue.runReady();
      anyRan = mainQueue.runReady() || anyRan;
    }
  }

  void advance(FakeMainQueue::Nanoseconds duration) {
    settle();
    mainQueue.advance(duration);
    settle();
  }

  FakeApplication application;
  FakeBundle bundle;
  FakeClassRegistry classRegistry;
  FakeClock clock;
  FakeDevice device;
  FakeDisplay display;
  FakeMainQueue mainQueue;
  FakeNetwork network;
  FakeNotificationCenter notificationCenter{mainQueue};
  FakeOverlaySurfaces overlaySurfaces;
  FakeUrlLoading urlLoading;
  FakeUrlOpener urlOpener;
  FakeUserDefaults userDefaults;
  platform::ViewDidAppear viewDidAppear{[](platform::ViewController&, bool) {}};
  FakeWebViewClass webViewClass;
};

}  // namespace tarnix::fakes
