#include "probe/capture/probe_web_view_console_capture.h"

#include <mutex>
#include <string_view>
#include <utility>

#include "probe/capture/console_user_script.h"
#include "probe/capture/probe_console_handler.h"
#include "probe/capture/probelog.h"
#include "probe/model/bounded_list.h"
#include "probe/platform/main_thread.h"
#include "probe/platform/platform.h"
#include "probe/platform/web_view.h"

namespace tarnix::ProbeWebViewConsoleCapture {
namespace {

using platform::WebView;
using platform::WebViewConfiguration;
using platform::WebViewInitialiser;

constexpr std::string_view initialiserName = "initWithFrame:configuration:";
constexpr std::string_view wrapperName = "probe_initWithFrame:configuration:";

enum class Exchange { notTried, done, noInitialiser, noWrapper };

struct Store {
  std::mutex lock;
  BoundedList<ConsoleEntry, maximumEntries> entries;
};

Store& store() {
  static Store& instance = *new Store;
  return instance;
}

// Main thread.
constinit Exchange exchange = Exchange::notTried;
constinit bool installed = false;

void addScriptAndHandler(WebViewConfiguration& configuration) {
  const platform::UserScript script{
      .source = std::string(consoleUserScript),
      .injectionTime = platform::UserScriptInjectionTime::AtDocumentStart,
      .forMainFrameOnly = false};
  platform::UserContentController& controller = configuration.userContentController();
  controller.addUserScript(script);
  controller.add(ProbeConsoleHandler::shared(), consoleMessageHandlerName);
}

WebViewInitialiser::Implementation wrapperBody();

/// The method `probe_initWithFrame:configuration:`, which holds the platform's own implementation
/// once the two are exchanged.
WebViewInitialiser& wrapper() {
  static WebViewInitialiser& method = *new WebViewInitialiser(wrapperBody());
  return method;
}

WebViewInitialiser::Implementation wrapperBody() {
  return [](WebView& view, platform::Rect frame, WebViewConfiguration& configuration) -> WebView* {
    try {
      addScriptAndHandler(configuration);
    } catch (...) {
      // Out of memory: the page's console goes unseen.
    }
    return wrapper()(view, frame, configuration);
  };
}

Exchange exchangeMethods() {
  platform::WebViewClass* const webViewClass = platform::current().webViewClass;
  WebViewInitialiser* const initialiser =
      webViewClass == nullptr ? nullptr : webViewClass->instanceMethod(initialiserName);
  if (initialiser == nullptr) {
    return Exchange::noInitialiser;
  }
  webViewClass->addInstanceMethod(wrapperName, wrapper());
  WebViewInitialiser* const added = webViewClass->instanceMethod(wrapperName);
  if (added != &wrapper()) {
    return Exchange::noWrapper;
  }
  WebViewInitialiser::exchangeImplementations(*initialiser, *added);
  return Exchange::done;
}

}  // namespace

void exchangeInitialisers() {
  if (exchange == Exchange::notTried) {
    exchange = exchangeMethods();
  }
}

void install() {
  platform::assertMainThread();
  if (std::exchange(installed, true)) {
    return;
  }
  exchangeInitialisers();
  if (exchange == Exchange::noInitialiser) {
    probelog(
        "[TarnixProbe] WebViewConsoleCapture: failed to find WKWebView.init(frame:configuration:)"
        "\n");
  } else if (exchange == Exchange::noWrapper) {
    probelog("[TarnixProbe] WebViewConsoleCapture: failed to find swizzled method\n");
  }
  probelog("[TarnixProbe] WebViewConsoleCapture installed\n");
}

void addEntry(ConsoleEntry entry) {
  // What makes way is destroyed after the lock is free.
  ConsoleEntry oldest;
  Store& kept = store();
  const std::lock_guard guard(kept.lock);
  oldest = kept.entries.add(std::move(entry));
}

std::vector<ConsoleEntry> entries() {
  Store& kept = store();
  const std::lock_guard guard(kept.lock);
  return kept.entries.all();
}

void forgetInstallation() {
  exchange = Exchange::notTried;
  installed = false;
  wrapper().setImplementation(wrapperBody());
  Store& kept = store();
  const std::lock_guard guard(kept.lock);
  kept.entries.clear();
}

}  // namespace tarnix::ProbeWebViewConsoleCapture
