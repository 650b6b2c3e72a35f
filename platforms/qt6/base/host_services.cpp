#include "platforms/qt6/base/host_services.h"

#include "platforms/qt6/base/network_part_loader.h"
#include "platforms/qt6/base/part_loader.h"
#include "platforms/qt6/base/qt_application.h"
#include "platforms/qt6/base/qt_bundle.h"
#include "platforms/qt6/base/qt_class_registry.h"
#include "platforms/qt6/base/qt_display.h"
#include "platforms/qt6/base/qt_main_queue.h"
#include "platforms/qt6/base/qt_notification_center.h"
#include "platforms/qt6/base/qt_overlay_surfaces.h"
#include "platforms/qt6/base/qt_url_loading.h"
#include "platforms/qt6/base/qt_url_opener.h"
#include "platforms/qt6/base/qt_user_defaults.h"
#include "platforms/qt6/base/qt_web_view_class.h"
#include "platforms/qt6/base/screen_watch.h"
#include "platforms/qt6/base/start_up_hook.h"
#include "platforms/qt6/base/web_engine_part_loader.h"
#include "platforms/qt6/base/window_order.h"

namespace tarnix::qt6 {

namespace {

/// The second way into the probe: called when the toolkit starts, it finds the work done wherever
/// the preloaded library's own initialiser ran before.
class _TarnixProbeLoader {  // NOLINT(bugprone-reserved-identifier): the name that logs know.
 public:
  static void load(const HostModuleContext& context) {
    if (context.bootstrap != nullptr) {
      context.bootstrap("ObjC +load");
    }
  }
};

}  // namespace

const HostServices& installHostServices(const HostModuleContext* context) {
  platform::WebViewClass* const webViewClass =
      WebEnginePartLoader::isPartThere() ? &QtWebViewClass::shared() : nullptr;
  static const HostServices& services =
      *new HostServices{.application = &QtApplication::shared(),
                        .bundle = &QtBundle::shared(),
                        .classRegistry = &QtClassRegistry::shared(),
                        .display = &QtDisplay::shared(),
                        .mainQueue = &QtMainQueue::shared(),
                        .notificationCenter = &QtNotificationCenter::shared(),
                        .userDefaults = &QtUserDefaults::shared(),
                        .overlaySurfaces = &QtOverlaySurfaces::shared(),
                        .urlLoading = &QtUrlLoading::shared(),
                        .urlOpener = &QtUrlOpener::shared(),
                        .viewDidAppear = &ScreenWatch::shared().viewDidAppear(),
                        .webViewClass = webViewClass};
  InterposedCalls* const calls = context == nullptr ? nullptr : context->interposedCalls;
  PartLoader::shared().start(calls);
  NetworkPartLoader::shared().start(QtUrlLoading::shared(), calls);
  if (webViewClass != nullptr) {
    WebEnginePartLoader::shared().start(calls);
  }
  start_up_hook::install(
      [context = context == nullptr ? HostModuleContext() : *context] {
        QtMainQueue::shared().start();
        QtDisplay::shared().start();
        WindowOrder::shared().start();
        ScreenWatch::shared().start();
        _TarnixProbeLoader::load(context);
        QtNotificationCenter::shared().start();
      },
      [] {
        ScreenWatch::shared().stop();
        QtNotificationCenter::shared().stop();
        QtDisplay::shared().stop();
        QtMainQueue::shared().stop();
      });
  return services;
}

}  // namespace tarnix::qt6
