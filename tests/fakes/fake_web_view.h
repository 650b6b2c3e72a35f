#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "probe/platform/web_view.h"

namespace tarnix::fakes {

class FakeUserContentController : public platform::UserContentController {
 public:
  void addUserScript(const platform::UserScript& script) override { scripts.push_back(script); }
  void add(platform::ScriptMessageHandler& handler, std::string_view name) override {
    handlers.emplace_back(name, &handler);
  }

  /// A script of a page posts `body`. False when nobody hears messages of that name.
  bool post(std::string_view name, platform::PropertyValue body) {
    for (const auto& [handlerName, handler] : handlers) {
      if (handlerName == name) {
        handler->userContentController(*this, {std::move(body)});
        return true;
      }
    }
    return false;
  }

  std::vector<platform::UserScript> scripts;
  std::vector<std::pair<std::string, platform::ScriptMessageHandler*>> handlers;
};

class FakeWebViewConfiguration : public platform::WebViewConfiguration {
 public:
  platform::UserContentController& userContentController() override { return controller; }

  FakeUserContentController controller;
};

/// Notes what its own initialiser found.
class FakeWebView : public platform::WebView {
 public:
  platform::Rect frame;
  std::size_t scriptsAtInitialisation = 0;
};

class FakeWebViewClass : public platform::WebViewClass {
 public:
  FakeWebViewClass() {
    methods_["initWithFrame:configuration:"] = &initialiser;
    initialiser.setImplementation([](platform::WebView& receiver, platform::Rect frame,
                                     platform::WebViewConfiguration& configuration) {
      auto& view = static_cast<FakeWebView&>(receiver);
      view.frame = frame;
      view.scriptsAtInitialisation =
          static_cast<FakeWebViewConfiguration&>(configuration).controller.scripts.size();
      return &receiver;
    });
  }

  platform::WebViewInitialiser* instanceMethod(std::string_view selector) override {
    const auto found = methods_.find(selector);
    return found == methods_.end() ? nullptr : found->second;
  }

  void addInstanceMethod(std::string_view selector, platform::WebViewInitialiser& method) override {
    methods_.try_emplace(std::string(selector), &method);
  }

  void removeInstanceMethod(const std::string& selector) { methods_.erase(selector); }

  platform::WebView* make(FakeWebView& view, platform::Rect frame,
                          FakeWebViewConfiguration& configuration) {
    return initialiser(view, frame, configuration);
  }

  platform::WebViewInitialiser initialiser{[](platform::WebView& view, platform::Rect,
                                              platform::WebViewConfiguration&) { return &view; }};

 private:
  std::map<std::string, platform::WebViewInitialiser*, std::less<>> methods_;
};

}  // namespace tarnix::fakes
