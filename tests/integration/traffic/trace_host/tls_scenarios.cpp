#include <QSslError>
#include <QUrl>

#include "tests/integration/traffic/trace_host/output.h"
#include "tests/integration/traffic/trace_host/requesting.h"
#include "tests/integration/traffic/trace_host/scenarios.h"

namespace trace_host {
namespace {

QNetworkReply* secure(QNetworkAccessManager& manager) {
  return manager.get(QNetworkRequest(QUrl(qEnvironmentVariable("TRACE_HOST_SECURE") + "/plain")));
}

}  // namespace

Scenarios tlsScenarios() {
  return {
      {"tls-unknown-certificate", [] { simple(secure); }},
      {"tls-accepted-by-reply",
       [] {
         simple([](QNetworkAccessManager& manager) {
           QNetworkReply* const reply = secure(manager);
           QObject::connect(reply, &QNetworkReply::sslErrors, reply, [reply] {
             say("  ignoreSslErrors");
             reply->ignoreSslErrors();
           });
           return reply;
         });
       }},
      {"redirect-to-unknown-certificate",
       [] {
         simple([](QNetworkAccessManager& manager) {
           QNetworkReply* const reply = manager.get(request("/redirect"));
           QObject::connect(reply, &QNetworkReply::sslErrors, reply, [reply] {
             say("  ignoreSslErrors");
             reply->ignoreSslErrors();
           });
           return reply;
         });
       }},
      {"tls-accepted-by-manager",
       [] {
         simple([](QNetworkAccessManager& manager) {
           QObject::connect(&manager, &QNetworkAccessManager::sslErrors,
                            [](QNetworkReply* reply) { reply->ignoreSslErrors(); });
           return secure(manager);
         });
       }},
      {"tls-accepted-beforehand",
       [] {
         simple([](QNetworkAccessManager& manager) {
           QNetworkReply* const reply = secure(manager);
           reply->ignoreSslErrors();
           return reply;
         });
       }},
  };
}

}  // namespace trace_host
