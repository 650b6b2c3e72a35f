// Makes requests in every way that an application can, and writes down all that it sees of each:
// every signal in its order with the state of the reply at that moment, attributes, headers, bytes.
// Run twice, with and without the probe, it must write the same.
//
//   trace_host http://127.0.0.1:PORT
//
// lists its scenarios, then runs each one that standard input names, until that ends.
#include <QEventLoop>
#include <QGuiApplication>
#include <QString>
#include <QStringList>
#include <QThread>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>

#include "tests/integration/traffic/trace_host/link_handler.h"
#include "tests/integration/traffic/trace_host/output.h"
#include "tests/integration/traffic/trace_host/scenarios.h"
#include "tests/integration/traffic/trace_host/steady_requests.h"

namespace trace_host {
namespace {

std::map<QString, std::function<void()>> allScenarios() {
  std::map<QString, std::function<void()>> all;
  for (const auto& table :
       {requestScenarios(), responseScenarios(), redirectScenarios(), failureScenarios(),
        lettingGoScenarios(), uploadScenarios(), tlsScenarios(), threadingScenarios()}) {
    for (const auto& [name, run] : table) {
      if (!all.emplace(name, run).second) {
        std::fprintf(stderr, "two scenarios are called %s\n", name);
        std::abort();
      }
    }
  }
  return all;
}

/// The next line of standard input; the event loop runs while it is waited for. Null at the end.
QString nextLine() {
  QByteArray line;
  bool isOver = false;
  QEventLoop loop;
  std::unique_ptr<QThread> reader(QThread::create([&] {
    for (int letter = std::getchar(); letter != '\n'; letter = std::getchar()) {
      if (letter == EOF) {
        isOver = true;
        return;
      }
      line += static_cast<char>(letter);
    }
  }));
  QObject::connect(reader.get(), &QThread::finished, &loop, &QEventLoop::quit);
  reader->start();
  loop.exec();
  reader->wait();
  return isOver ? QString() : QString::fromUtf8(line);
}

}  // namespace
}  // namespace trace_host

int main(int argumentCount, char** arguments) {
  using namespace trace_host;
  QGuiApplication application(argumentCount, arguments);
  const QStringList words = application.arguments();
  if (words.size() != 2) {
    return 2;
  }
  setBase(words[1]);
  const auto all = allScenarios();
  const LinkHandler links;
  std::unique_ptr<SteadyRequests> steady;
  if (const int count = qEnvironmentVariableIntValue("TRACE_HOST_STEADY_REQUESTS"); count > 0) {
    const int threads = qEnvironmentVariableIntValue("TRACE_HOST_STEADY_THREADS");
    steady = std::make_unique<SteadyRequests>(threads > 0 ? threads : 1, count);
  }
  for (const auto& [name, run] : all) {
    say(name);
  }
  say("== ready");
  std::fflush(stdout);
  for (QString name = nextLine(); !name.isNull(); name = nextLine()) {
    if (const auto scenario = all.find(name); scenario != all.end()) {
      scenario->second();
    } else if (name == "opened") {
      links.sayOpened();
    } else if (name == "stop-steady" && steady != nullptr) {
      steady->stop();
    } else {
      say("no such scenario");
    }
    say("== done");
    std::fflush(stdout);
  }
  return 0;
}
