#pragma once

#include <QString>
#include <QUrl>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <functional>
#include <string>
#include <vector>

#include "probe/capture/probe_web_view_console_capture.h"
#include "tests/contract/webengine/page_server.h"

namespace tarnix::contract {

/// Runs the event loop until `condition` holds; false when it does not for a long time.
bool waitUntil(const std::function<bool()>& condition);

/// One line as the application's own handling of the console sees it.
struct ConsoleLine {
  int level = 0;
  QString message;
  int line = 0;
  QString source;
};

/// A page of an application that handles the console itself.
class ListeningPage : public QWebEnginePage {
 public:
  using QWebEnginePage::QWebEnginePage;

  /// Loads and waits for the end of it.
  bool loadAndWait(const QUrl& url);
  /// Waits for the end of the loading that `start` begins.
  bool doAndWait(const std::function<void()>& start);
  /// The lines whose message starts so.
  std::vector<ConsoleLine> linesWith(const QString& start) const;
  /// Runs a script in the page and returns its value.
  QVariant evaluate(const QString& source);

  std::vector<ConsoleLine> lines;
  std::vector<ListeningPage*> opened;

 protected:
  void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message,
                                int line, const QString& source) override;
  QWebEnginePage* createWindow(WebWindowType type) override;
};

/// What was captured, of messages that start so.
std::vector<ProbeWebViewConsoleCapture::ConsoleEntry> entriesWith(const std::string& start);

/// Waits until that many were captured; their messages, in order.
std::vector<std::string> capturedMessages(const std::string& start, std::size_t count);

/// The server of this process.
PageServer& pageServer();

}  // namespace tarnix::contract
