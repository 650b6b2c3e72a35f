#include "tests/contract/webengine/web_engine_world.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QVariant>
#include <optional>

namespace tarnix::contract {

bool waitUntil(const std::function<bool()>& condition) {
  constexpr int patienceMilliseconds = 60'000;
  QElapsedTimer time;
  time.start();
  while (!condition()) {
    if (time.elapsed() > patienceMilliseconds) {
      return false;
    }
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
  }
  return true;
}

bool ListeningPage::loadAndWait(const QUrl& url) {
  return doAndWait([this, &url] { load(url); });
}

bool ListeningPage::doAndWait(const std::function<void()>& start) {
  std::optional<bool> result;
  const QMetaObject::Connection connection =
      connect(this, &QWebEnginePage::loadFinished, this, [&result](bool ok) { result = ok; });
  start();
  const bool isDone = waitUntil([&result] { return result.has_value(); });
  disconnect(connection);
  return isDone && *result;
}

std::vector<ConsoleLine> ListeningPage::linesWith(const QString& start) const {
  std::vector<ConsoleLine> found;
  for (const ConsoleLine& line : lines) {
    if (line.message.startsWith(start)) {
      found.push_back(line);
    }
  }
  return found;
}

QVariant ListeningPage::evaluate(const QString& source) {
  std::optional<QVariant> result;
  runJavaScript(source, [&result](const QVariant& value) { result = value; });
  waitUntil([&result] { return result.has_value(); });
  return result.value_or(QVariant());
}

void ListeningPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level,
                                             const QString& message, int line,
                                             const QString& source) {
  lines.push_back({static_cast<int>(level), message, line, source});
}

QWebEnginePage* ListeningPage::createWindow(WebWindowType) {
  opened.push_back(new ListeningPage(profile(), this));
  return opened.back();
}

std::vector<ProbeWebViewConsoleCapture::ConsoleEntry> entriesWith(const std::string& start) {
  std::vector<ProbeWebViewConsoleCapture::ConsoleEntry> found;
  for (const auto& entry : ProbeWebViewConsoleCapture::entries()) {
    if (entry.message.starts_with(start)) {
      found.push_back(entry);
    }
  }
  return found;
}

std::vector<std::string> capturedMessages(const std::string& start, std::size_t count) {
  waitUntil([&] { return entriesWith(start).size() >= count; });
  std::vector<std::string> messages;
  for (const auto& entry : entriesWith(start)) {
    messages.push_back(entry.message);
  }
  return messages;
}

PageServer& pageServer() {
  static PageServer& server = *new PageServer;
  return server;
}

}  // namespace tarnix::contract
