#pragma once

#include "probe/bootstrap/interposed_calls.h"
#include "probe/platform/application.h"
#include "probe/platform/bundle.h"
#include "probe/platform/class_registry.h"
#include "probe/platform/display.h"
#include "probe/platform/main_queue.h"
#include "probe/platform/notification_center.h"
#include "probe/platform/overlay_surface.h"
#include "probe/platform/url_loading.h"
#include "probe/platform/url_opener.h"
#include "probe/platform/user_defaults.h"
#include "probe/platform/view_controller.h"
#include "probe/platform/web_view.h"

namespace tarnix {

/// What a toolkit brings to `platform::Platform`. None is null but where said so; all live as long
/// as the process.
struct HostServices {
  platform::Application* application = nullptr;
  platform::Bundle* bundle = nullptr;
  platform::ClassRegistry* classRegistry = nullptr;
  platform::Display* display = nullptr;
  platform::MainQueue* mainQueue = nullptr;
  platform::NotificationCenter* notificationCenter = nullptr;
  platform::UserDefaults* userDefaults = nullptr;
  /// Null on a host that cannot be drawn over.
  platform::OverlaySurfaces* overlaySurfaces = nullptr;
  /// Null in a host that loads no URLs.
  platform::UrlLoading* urlLoading = nullptr;
  /// Null in a host that cannot open URLs.
  platform::UrlOpener* urlOpener = nullptr;
  /// Null in a host whose screens cannot be told.
  platform::ViewDidAppear* viewDidAppear = nullptr;
  /// Null in a host that cannot show pages.
  platform::WebViewClass* webViewClass = nullptr;
};

/// What a toolkit module is given when it is loaded; it takes a copy.
struct HostModuleContext {
  /// The second way into the probe: called by the module's load hook, on the main thread, with the
  /// reason "ObjC +load". Finds the work done wherever the static initialiser ran before.
  void (*bootstrap)(const char* reason) = nullptr;
  /// Where the module may put functions of its own in front of the toolkit's. Null where no library
  /// was loaded first. Lives as long as the process.
  InterposedCalls* interposedCalls = nullptr;
};

/// The one symbol that a toolkit module exports, as "tarnixprobe_host_module". A module is loaded
/// locally and shares no other symbol with the core: they meet in the virtual functions of
/// `probe/platform/`. Called once, on the loading thread, before `main`.
using HostModuleEntry = const HostServices* (*)(const HostModuleContext* context);
inline constexpr const char* hostModuleEntryName = "tarnixprobe_host_module";

}  // namespace tarnix
