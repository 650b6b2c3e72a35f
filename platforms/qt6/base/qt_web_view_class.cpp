#include "platforms/qt6/base/qt_web_view_class.h"

#include "platforms/qt6/shared/web_engine_part.h"

namespace tarnix::qt6 {

namespace {

platform::WebView* initialise(platform::WebView& receiver, platform::Rect,
                              platform::WebViewConfiguration&) {
  static_cast<EnginePage&>(receiver).initialise();
  return &receiver;
}

}  // namespace

QtWebViewClass::QtWebViewClass()
    : initialiser_(initialise), methods_{{"initWithFrame:configuration:", &initialiser_}} {}

QtWebViewClass& QtWebViewClass::shared() {
  static QtWebViewClass& instance = *new QtWebViewClass;
  return instance;
}

platform::WebViewInitialiser* QtWebViewClass::instanceMethod(std::string_view selector) {
  const auto found = methods_.find(selector);
  return found == methods_.end() ? nullptr : found->second;
}

void QtWebViewClass::addInstanceMethod(std::string_view selector,
                                       platform::WebViewInitialiser& method) {
  methods_.try_emplace(std::string(selector), &method);
}

}  // namespace tarnix::qt6
