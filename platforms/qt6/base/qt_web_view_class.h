#pragma once

#include <map>
#include <string>

#include "probe/platform/web_view.h"

namespace tarnix::qt6 {

/// The toolkit's web views as the core sees them: a page is a web view, made when it is about to
/// load for the first time. Main thread.
class QtWebViewClass : public platform::WebViewClass {
 public:
  static QtWebViewClass& shared();

  platform::WebViewInitialiser* instanceMethod(std::string_view selector) override;
  void addInstanceMethod(std::string_view selector, platform::WebViewInitialiser& method) override;

  /// Any thread.
  platform::WebViewInitialiser& initialiser() { return initialiser_; }

 private:
  QtWebViewClass();

  platform::WebViewInitialiser initialiser_;
  std::map<std::string, platform::WebViewInitialiser*, std::less<>> methods_;
};

}  // namespace tarnix::qt6
