#pragma once

#include "probe/platform/application.h"
#include "probe/platform/bundle.h"
#include "probe/platform/class_registry.h"
#include "probe/platform/clock.h"
#include "probe/platform/device.h"
#include "probe/platform/display.h"
#include "probe/platform/main_queue.h"
#include "probe/platform/network.h"
#include "probe/platform/notification_center.h"
#include "probe/platform/overlay_surface.h"
#include "probe/platform/url_loading.h"
#include "probe/platform/url_opener.h"
#include "probe/platform/user_defaults.h"
#include "probe/platform/view_controller.h"
#include "probe/platform/web_view.h"

namespace tarnix::platform {

/// Everything that the core asks of the world and that a test replaces. None is null but where said
/// so; what is pointed at lives as long as the process (in a test, as long as the test).
struct Platform {
  Application* application = nullptr;
  Bundle* bundle = nullptr;
  ClassRegistry* classRegistry = nullptr;
  Clock* clock = nullptr;
  Device* device = nullptr;
  Display* display = nullptr;
  MainQueue* mainQueue = nullptr;
  Network* network = nullptr;
  NotificationCenter* notificationCenter = nullptr;
  /// Null on a host that cannot be drawn over.
  OverlaySurfaces* overlaySurfaces = nullptr;
  /// Null in a host that loads no URLs.
  UrlLoading* urlLoading = nullptr;
  /// Null in a host that cannot open URLs.
  UrlOpener* urlOpener = nullptr;
  UserDefaults* userDefaults = nullptr;
  /// Null on a host whose screens cannot be told.
  ViewDidAppear* viewDidAppear = nullptr;
  /// Null in a host that cannot show pages.
  WebViewClass* webViewClass = nullptr;
};

namespace detail {
// Constant-initialised and trivially destroyed, so that it serves before the process's own
// initialisers have run and after its destructors have.
inline constinit Platform installed;
}  // namespace detail

/// The platform in force.
inline const Platform& current() { return detail::installed; }

/// Once, before anything else of the core runs; a test may set its own.
inline void setCurrent(const Platform& platform) { detail::installed = platform; }

}  // namespace tarnix::platform
