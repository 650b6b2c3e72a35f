#include "platforms/qt6/base/qt_display.h"

#include <utility>

#include "platforms/qt6/base/deferred_display_link.h"
#include "platforms/qt6/base/qt_display_link.h"
#include "platforms/qt6/base/timed_display_link.h"

namespace tarnix::qt6 {

QtDisplay& QtDisplay::shared() {
  static QtDisplay& instance = *new QtDisplay;
  return instance;
}

void QtDisplay::start() { QtDisplayLink::resumeAll(); }

void QtDisplay::stop() { QtDisplayLink::suspendAll(); }

std::unique_ptr<platform::DisplayLink> QtDisplay::displayLink(Tick tick,
                                                              platform::TickDelivery delivery) {
  if (delivery == platform::TickDelivery::Deferred) {
    return std::make_unique<DeferredDisplayLink>(std::move(tick));
  }
  return std::make_unique<TimedDisplayLink>(std::move(tick));
}

}  // namespace tarnix::qt6
