#pragma once

#include <string>
#include <string_view>

#include "probe/platform/exchangeable_method.h"
#include "probe/platform/geometry.h"
#include "probe/platform/property_value.h"

namespace tarnix::platform {

enum class UserScriptInjectionTime {
  /// Once the document's element is there and before any script of the page.
  AtDocumentStart,
  AtDocumentEnd,
};

/// A script that runs in pages beside their own scripts.
struct UserScript {
  /// In UTF-8.
  std::string source;
  UserScriptInjectionTime injectionTime = UserScriptInjectionTime::AtDocumentEnd;
  bool forMainFrameOnly = true;
};

/// What a script in a page posted.
struct ScriptMessage {
  PropertyValue body;
};

class UserContentController;

/// Hears what scripts post. Main thread.
class ScriptMessageHandler {
 public:
  virtual ~ScriptMessageHandler() = default;

  virtual void userContentController(UserContentController& controller,
                                     const ScriptMessage& message) = 0;
};

/// What the pages of one or more web views are given beside what they load. Main thread.
class UserContentController {
 public:
  virtual ~UserContentController() = default;

  virtual void addUserScript(const UserScript& script) = 0;

  /// User scripts reach `handler`, which outlives the controller, as
  /// `window.webkit.messageHandlers.NAME.postMessage(body)`.
  virtual void add(ScriptMessageHandler& handler, std::string_view name) = 0;
};

/// What a web view is made from. Main thread.
class WebViewConfiguration {
 public:
  virtual ~WebViewConfiguration() = default;

  virtual UserContentController& userContentController() = 0;
};

/// A part of the user interface that shows pages.
class WebView {
 public:
  virtual ~WebView() = default;
};

/// An initialiser of web views: the view, its frame and its configuration; the view, or null when
/// it could not be made. On the main thread.
using WebViewInitialiser = ExchangeableMethod<WebView*(WebView& receiver, Rect frame,
                                                       WebViewConfiguration& configuration)>;

/// The methods of the host's web views. Main thread.
class WebViewClass {
 public:
  virtual ~WebViewClass() = default;

  /// By its selector, as in "initWithFrame:configuration:". Null when there is none.
  virtual WebViewInitialiser* instanceMethod(std::string_view selector) = 0;

  /// Adds one, unless there is one of that selector. `method` lives as long as the process.
  virtual void addInstanceMethod(std::string_view selector, WebViewInitialiser& method) = 0;
};

}  // namespace tarnix::platform
