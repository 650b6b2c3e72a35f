#include "tests/integration/traffic/trace_host/requesting.h"
#include "tests/integration/traffic/trace_host/scenarios.h"

namespace trace_host {
namespace {

QNetworkRequest withPolicy(const QString& path, int policy) {
  return with(request(path), QNetworkRequest::RedirectPolicyAttribute, policy);
}

}  // namespace

Scenarios redirectScenarios() {
  return {
      {"302-other-host-policy",
       [] {
         simple([](auto& manager) {
           return manager.get(
               withPolicy("/redirect?code=302", QNetworkRequest::ManualRedirectPolicy));
         });
       }},
      {"305-other-host-policy",
       [] {
         simple([](auto& manager) {
           return manager.get(withPolicy("/status?code=305&location=/plain",
                                         QNetworkRequest::ManualRedirectPolicy));
         });
       }},
      {"302", get("/redirect?code=302")},
      {"301", get("/redirect?code=301&times=3")},
      {"307-post",
       [] {
         simple([](auto& manager) {
           return manager.post(request("/status?code=307&location=/echo"), QByteArray("again"));
         });
       }},
      {"303-post",
       [] {
         simple([](auto& manager) {
           return manager.post(request("/status?code=303&location=/plain"), QByteArray("once"));
         });
       }},
      {"same-origin-redirect",
       [] {
         simple([](auto& manager) {
           return manager.get(withPolicy("/redirect", QNetworkRequest::SameOriginRedirectPolicy));
         });
       }},
      {"user-verified-redirect",
       [] {
         QNetworkAccessManager manager;
         traceManager(manager);
         QNetworkReply* const reply =
             manager.get(withPolicy("/redirect", QNetworkRequest::UserVerifiedRedirectPolicy));
         QObject::connect(reply, &QNetworkReply::redirected, reply,
                          [reply] { Q_EMIT reply->redirectAllowed(); });
         follow(reply);
       }},
      {"redirect-loop",
       [] {
         simple([](auto& manager) {
           QNetworkRequest looping = request("/loop");
           looping.setMaximumRedirectsAllowed(3);
           return manager.get(looping);
         });
       }},
      {"redirect-to-refusal", get("/status?code=302&location=http://127.0.0.1:1/")},
      {"redirect-to-nowhere", get("/status?code=302&location=ftp://nowhere.test/")},
  };
}

}  // namespace trace_host
