#include <QUrl>

#include "tests/integration/traffic/trace_host/requesting.h"
#include "tests/integration/traffic/trace_host/scenarios.h"

namespace trace_host {

Scenarios failureScenarios() {
  return {
      {"refused",
       [] {
         simple([](auto& manager) {
           return manager.get(QNetworkRequest(QUrl("http://127.0.0.1:1/")));
         });
       }},
      {"no-such-host",
       [] {
         simple([](auto& manager) {
           return manager.get(QNetworkRequest(QUrl("http://nowhere.invalid/")));
         });
       }},
      {"unknown-scheme",
       [] {
         simple([](auto& manager) { return manager.get(QNetworkRequest(QUrl("nothing://x/"))); });
       }},
      {"data-scheme",
       [] {
         simple([](auto& manager) {
           return manager.get(QNetworkRequest(QUrl("data:text/plain,hello")));
         });
       }},
      {"file-scheme",
       [] {
         simple(
             [](auto& manager) {
               return manager.get(QNetworkRequest(QUrl("file:///etc/hostname")));
             },
             {.loose = true});
       }},
      {"reset", get("/reset")},
      {"early-close",
       [] {
         simple(
             [](auto& manager) { return manager.post(request("/early-close"), QByteArray("x")); });
       }},
      {"timeout",
       [] {
         simple([](auto& manager) {
           QNetworkRequest slow = request("/slow?seconds=3");
           slow.setTransferTimeout(300);
           return manager.get(slow);
         });
       }},
  };
}

}  // namespace trace_host
