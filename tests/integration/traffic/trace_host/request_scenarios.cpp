#include <QAuthenticator>
#include <QNetworkCookie>
#include <QNetworkCookieJar>
#include <QNetworkDiskCache>
#include <QTemporaryDir>
#include <QUrl>

#include "tests/integration/traffic/trace_host/output.h"
#include "tests/integration/traffic/trace_host/requesting.h"
#include "tests/integration/traffic/trace_host/scenarios.h"
#include "tests/integration/traffic/trace_host/tracer.h"

namespace trace_host {
namespace {

/// An application's own manager: one that overrides what the probe takes hold of.
class OwnManager : public QNetworkAccessManager {
 protected:
  QNetworkReply* createRequest(Operation operation, const QNetworkRequest& request,
                               QIODevice* body) override {
    QNetworkRequest changed = request;
    changed.setRawHeader("X-Own", "yes");
    return QNetworkAccessManager::createRequest(operation, changed, body);
  }
};

class PlainlyDerivedManager : public QNetworkAccessManager {};

}  // namespace

Scenarios requestScenarios() {
  return {
      {"get", get("/plain?a=1#top")},
      {"get-empty", get("/status?code=200")},
      {"accepted", get("/status?code=202")},
      {"head", [] { simple([](auto& manager) { return manager.head(request("/plain")); }); }},
      {"post",
       [] {
         simple([](auto& manager) {
           QNetworkRequest post = request("/echo");
           post.setHeader(QNetworkRequest::ContentTypeHeader, "text/plain");
           return manager.post(post, QByteArray("some text"));
         });
       }},
      {"post-nothing",
       [] {
         simple([](auto& manager) {
           QNetworkRequest post = request("/echo");
           post.setHeader(QNetworkRequest::ContentTypeHeader, "text/plain");
           return manager.post(post, QByteArray());
         });
       }},
      {"put",
       [] {
         simple([](auto& manager) { return manager.put(request("/echo"), QByteArray("x")); });
       }},
      {"delete",
       [] { simple([](auto& manager) { return manager.deleteResource(request("/echo")); }); }},
      {"custom",
       [] {
         simple([](auto& manager) {
           return manager.sendCustomRequest(request("/echo"), "PATCH", QByteArray("patch"));
         });
       }},
      {"derived-manager",
       [] {
         OwnManager manager;
         traceManager(manager);
         follow(manager.get(request("/plain")));
       }},
      {"plainly-derived-manager",
       [] {
         PlainlyDerivedManager manager;
         traceManager(manager);
         follow(manager.get(request("/plain")));
       }},
      {"authentication",
       [] {
         QNetworkAccessManager manager;
         traceManager(manager);
         QNetworkReply* reply = nullptr;
         QObject::connect(&manager, &QNetworkAccessManager::authenticationRequired,
                          [&reply](QNetworkReply* asking, QAuthenticator* authenticator) {
                            say(QString("  it is the reply: %1").arg(asking == reply));
                            authenticator->setUser("user");
                            authenticator->setPassword("secret");
                          });
         reply = manager.get(request("/auth"));
         follow(reply);
       }},
      {"cookies",
       [] {
         QNetworkAccessManager manager;
         traceManager(manager);
         follow(manager.get(request("/cookie")));
         follow(manager.get(request("/cookie")));
         for (const QNetworkCookie& cookie : manager.cookieJar()->cookiesForUrl(QUrl(base()))) {
           say("  cookie " + cookie.toRawForm());
         }
       }},
      {"cache",
       [] {
         QTemporaryDir directory;
         QNetworkAccessManager manager;
         traceManager(manager);
         auto* const cache = new QNetworkDiskCache(&manager);
         cache->setCacheDirectory(directory.path());
         manager.setCache(cache);
         follow(manager.get(request("/cached")));
         follow(manager.get(request("/cached")));
         follow(manager.get(with(request("/cached"), QNetworkRequest::CacheLoadControlAttribute,
                                 QNetworkRequest::AlwaysCache)));
       }},
  };
}

}  // namespace trace_host
