#include <QUrl>

#include "tests/integration/traffic/trace_host/output.h"
#include "tests/integration/traffic/trace_host/requesting.h"
#include "tests/integration/traffic/trace_host/scenarios.h"
#include "tests/integration/traffic/trace_host/tracer.h"

namespace trace_host {

Scenarios responseScenarios() {
  return {
      {"chunked", get("/chunked")},
      {"gzip", get("/gzip")},
      {"partial-reads", get("/bytes?size=3000", {.readInSlots = true, .readAtMost = 1'000})},
      {"large", get("/bytes?size=5000000", {.loose = true, .readInSlots = true})},
      {"large-partial",
       get("/bytes?size=500000", {.loose = true, .readInSlots = true, .readAtMost = 777})},
      {"large-unread", get("/bytes?size=5000000", {.loose = true})},
      {"trickle", get("/trickle", {.loose = true})},
      {"trickle-read", get("/trickle", {.loose = true, .readInSlots = true})},
      {"204", get("/status?code=204")},
      {"404", get("/status?code=404&body=gone")},
      {"500", get("/status?code=500&body=oops")},
      {"401", get("/auth")},
      {"407", get("/status?code=407&body=who")},
      {"disconnected",
       [] {
         QNetworkAccessManager manager;
         std::unique_ptr<QNetworkReply> reply(manager.get(request("/plain")));
         reply->disconnect();
         settle(reply.get());
         Tracer tracer(reply.get());
         tracer.body(reply->readAll());
       }},
      {"read-buffer-limit",
       [] {
         QNetworkAccessManager manager;
         traceManager(manager);
         QNetworkReply* const reply = manager.get(request("/bytes?size=300000"));
         reply->setReadBufferSize(1'000);
         Tracer tracer(reply, true);
         // Nothing is read for a while: no more than the limit may come in.
         spin(300);
         say(QString("  at most the limit: %1").arg(reply->bytesAvailable() <= 1'000));
         QByteArray read;
         QObject::connect(reply, &QNetworkReply::readyRead, &tracer,
                          [&] { read += reply->readAll(); });
         read += reply->readAll();
         wait(reply);
         read += reply->readAll();
         tracer.body(read);
         delete reply;
       }},
      {"late-connect",
       [] {
         QNetworkAccessManager manager;
         QNetworkReply* const reply = manager.get(request("/plain"));
         settle(reply);
         follow(reply);
       }},
      {"never-read",
       [] {
         QNetworkAccessManager manager;
         traceManager(manager);
         QNetworkReply* const reply = manager.get(request("/plain"));
         Tracer tracer(reply);
         wait(reply);
         delete reply;
       }},
      {"auto-delete",
       [] {
         QNetworkAccessManager manager;
         manager.setAutoDeleteReplies(true);
         traceManager(manager);
         QNetworkReply* const reply = manager.get(request("/plain"));
         Tracer tracer(reply);
         wait(reply);
         spin(50);
       }},
  };
}

}  // namespace trace_host
