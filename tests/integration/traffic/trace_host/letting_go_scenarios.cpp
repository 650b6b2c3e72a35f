#include <memory>
#include <vector>

#include "tests/integration/traffic/trace_host/output.h"
#include "tests/integration/traffic/trace_host/requesting.h"
#include "tests/integration/traffic/trace_host/scenarios.h"
#include "tests/integration/traffic/trace_host/tracer.h"

namespace trace_host {
namespace {

/// Deletes the reply inside one of its signals.
void deleteInside(const char* signal, const QString& path) {
  QNetworkAccessManager manager;
  traceManager(manager);
  QPointer<QNetworkReply> reply = manager.get(request(path));
  Tracer tracer(reply);
  const auto remove = [&reply] { delete reply; };
  const QByteArray name = signal;
  if (name == "metaDataChanged") {
    QObject::connect(reply, &QNetworkReply::metaDataChanged, &tracer, remove);
  } else if (name == "readyRead") {
    QObject::connect(reply, &QNetworkReply::readyRead, &tracer, remove);
  } else if (name == "errorOccurred") {
    QObject::connect(reply, &QNetworkReply::errorOccurred, &tracer, remove);
  } else if (name == "finished") {
    // Not straight away: the manager itself still uses the reply behind this slot.
    QObject::connect(reply, &QNetworkReply::finished, &tracer, [&reply] { reply->deleteLater(); });
  }
  settle(reply);
  tracer.state("end");
}

void abortInside(const char* signal, const QString& path) {
  QNetworkAccessManager manager;
  traceManager(manager);
  std::unique_ptr<QNetworkReply> reply(manager.get(request(path)));
  Tracer tracer(reply.get());
  const auto abort = [&reply] {
    say("  abort:");
    reply->abort();
    say("  aborted.");
  };
  const QByteArray name = signal;
  if (name == "metaDataChanged") {
    QObject::connect(reply.get(), &QNetworkReply::metaDataChanged, &tracer, abort);
  } else if (name == "readyRead") {
    QObject::connect(reply.get(), &QNetworkReply::readyRead, &tracer, abort);
  } else if (name == "finished") {
    QObject::connect(reply.get(), &QNetworkReply::finished, &tracer, abort);
  } else {
    abort();
  }
  settle(reply.get());
  tracer.body(reply->readAll());
  tracer.state("end");
}

/// The signals of a reply, each with a way to have something done in it.
std::vector<std::pair<const char*, std::function<void(QNetworkReply*, std::function<void()>)>>>
everySignal() {
  const auto in = [](auto signal) {
    return [signal](QNetworkReply* reply, std::function<void()> action) {
      QObject::connect(reply, signal, [action] { action(); });
    };
  };
  return {{"socketStartedConnecting", in(&QNetworkReply::socketStartedConnecting)},
          {"requestSent", in(&QNetworkReply::requestSent)},
          {"uploadProgress", in(&QNetworkReply::uploadProgress)},
          {"metaDataChanged", in(&QNetworkReply::metaDataChanged)},
          {"redirected", in(&QNetworkReply::redirected)},
          {"readyRead", in(&QNetworkReply::readyRead)},
          {"downloadProgress", in(&QNetworkReply::downloadProgress)},
          {"errorOccurred", in(&QNetworkReply::errorOccurred)},
          {"readChannelFinished", in(&QNetworkReply::readChannelFinished)},
          {"aboutToClose", in(&QNetworkReply::aboutToClose)},
          {"finished", in(&QNetworkReply::finished)}};
}

/// Does something in each signal in turn, with replies of several kinds. Writes what came of it.
void inEverySignal(const char* what, const std::function<void(QNetworkReply*)>& action) {
  for (const char* const path :
       {"/plain", "/redirect", "/loop", "/status?code=404&body=gone", "/failing"}) {
    for (const auto& [name, connect] : everySignal()) {
      QNetworkAccessManager manager;
      QNetworkRequest posted = request(path);
      posted.setMaximumRedirectsAllowed(2);
      QPointer<QNetworkReply> reply = manager.post(posted, QByteArray("body"));
      int times = 0;
      connect(reply, [&] {
        if (++times == 1) {
          action(reply);
        }
      });
      for (int turn = 0; turn < 1'000 && reply != nullptr && !reply->isFinished(); ++turn) {
        spin(1);
      }
      // Whatever else was on its way.
      spin(1);
      say(QString("  %1 in %2 of %3: %4, %5")
              .arg(what, name, path, times > 0 ? "done" : "never sent",
                   reply == nullptr ? QString("gone") : QString::number(int(reply->error()))));
      delete reply;
    }
  }
}

}  // namespace

Scenarios lettingGoScenarios() {
  return {
      {"abort-at-once", [] { abortInside("", "/plain"); }},
      {"abort-in-meta-data", [] { abortInside("metaDataChanged", "/plain"); }},
      {"abort-in-ready-read", [] { abortInside("readyRead", "/plain"); }},
      {"abort-in-ready-read-of-chunks", [] { abortInside("readyRead", "/chunked"); }},
      {"abort-in-finished", [] { abortInside("finished", "/plain"); }},
      {"abort-while-waiting",
       [] {
         QNetworkAccessManager manager;
         traceManager(manager);
         std::unique_ptr<QNetworkReply> reply(manager.get(request("/slow?seconds=2")));
         Tracer tracer(reply.get());
         spin(200);
         reply->abort();
         tracer.state("end");
       }},
      {"close-in-ready-read",
       [] {
         QNetworkAccessManager manager;
         traceManager(manager);
         std::unique_ptr<QNetworkReply> reply(manager.get(request("/plain")));
         Tracer tracer(reply.get());
         QObject::connect(reply.get(), &QNetworkReply::readyRead, [&reply] { reply->close(); });
         settle(reply.get());
         tracer.state("end");
       }},
      {"delete-at-once",
       [] {
         QNetworkAccessManager manager;
         traceManager(manager);
         delete manager.get(request("/plain"));
         spin(300);
       }},
      {"delete-in-meta-data", [] { deleteInside("metaDataChanged", "/plain"); }},
      {"delete-in-ready-read", [] { deleteInside("readyRead", "/plain"); }},
      {"delete-in-error", [] { deleteInside("errorOccurred", "/status?code=404&body=x"); }},
      {"delete-in-finished", [] { deleteInside("finished", "/plain"); }},
      {"mocked-delete-everywhere",
       [] { inEverySignal("deleted", [](QNetworkReply* reply) { delete reply; }); }},
      {"abort-everywhere",
       [] { inEverySignal("aborted", [](QNetworkReply* reply) { reply->abort(); }); }},
      {"loop-everywhere", [] { inEverySignal("looped", [](QNetworkReply*) { spin(5); }); }},
      {"delete-manager",
       [] {
         auto manager = std::make_unique<QNetworkAccessManager>();
         traceManager(*manager);
         QNetworkReply* const reply = manager->get(request("/slow?seconds=1"));
         Tracer tracer(reply);
         spin(100);
         manager.reset();
         tracer.state("end");
       }},
      {"delete-manager-in-finished",
       [] {
         auto* const manager = new QNetworkAccessManager;
         traceManager(*manager);
         QPointer<QNetworkReply> reply = manager->get(request("/redirect"));
         Tracer tracer(reply);
         QObject::connect(reply, &QNetworkReply::finished, manager, &QObject::deleteLater);
         settle(reply);
         say(QString("  reply gone: %1").arg(reply == nullptr));
       }},
  };
}

}  // namespace trace_host
