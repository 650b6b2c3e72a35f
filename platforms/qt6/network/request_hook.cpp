#include "platforms/qt6/network/request_hook.h"

#include <dlfcn.h>

#include <QNetworkReply>
#include <memory>

#include "platforms/qt6/network/answer_reply.h"
#include "platforms/qt6/network/exchange.h"
#include "platforms/qt6/network/reply_observer.h"
#include "platforms/qt6/shared/virtual_slot.h"

namespace tarnix::qt6::request_hook {

namespace {

constexpr const char* library = "libQt6Network.so.6";
constexpr const char* managerTable = "_ZTV21QNetworkAccessManager";
constexpr const char* createRequestName =
    "_ZN21QNetworkAccessManager13createRequestENS_9OperationERK15QNetworkRequestP9QIODevice";

using CreateRequest = QNetworkReply*(QNetworkAccessManager*, QNetworkAccessManager::Operation,
                                     const QNetworkRequest*, QIODevice*);

// Set once, before any call comes in.
constinit CreateRequest* toolkitFunction = nullptr;
constinit RequestRouter* router = nullptr;

/// Null: the toolkit is to make the request, and has not been asked yet.
QNetworkReply* letProtocolLoad(const HostRequest& request) {
  platform::UrlRequest described = describe(request);
  platform::UrlProtocolClass* const protocolClass = router->protocolClassFor(described);
  if (protocolClass == nullptr) {
    return nullptr;
  }
  auto exchange = std::make_unique<Exchange>();
  exchange->start(*protocolClass, std::move(described), request);
  if (QNetworkReply* const reply = exchange->reply()) {
    ReplyObserver::attach(*reply, std::move(exchange));
    return reply;
  }
  if (!exchange->answer().isComplete) {
    return nullptr;
  }
  auto* const reply = new AnswerReply(request, exchange->answer());
  exchange->stop();
  return reply;
}

/// What stands in the toolkit's place.
QNetworkReply* hook(QNetworkAccessManager* manager, QNetworkAccessManager::Operation operation,
                    const QNetworkRequest* request, QIODevice* body) {
  return createRequest({manager, operation, *request, body});
}

void* untypedHook(void* manager, int operation, const void* request, void* body) {
  return hook(static_cast<QNetworkAccessManager*>(manager),
              static_cast<QNetworkAccessManager::Operation>(operation),
              static_cast<const QNetworkRequest*>(request), static_cast<QIODevice*>(body));
}

}  // namespace

bool install(const NetworkPartContext& context) {
  void* const handle = dlopen(library, RTLD_LAZY | RTLD_NOLOAD);
  void* const function = handle == nullptr ? nullptr : dlsym(handle, createRequestName);
  if (function == nullptr) {
    return false;
  }
  toolkitFunction = reinterpret_cast<CreateRequest*>(function);
  router = context.router;
  // The table may hold the name's first definition instead of the toolkit's own: the preloaded one.
  void* const interposed = dlsym(RTLD_DEFAULT, createRequestName);
  const bool isInTable =
      replaceVirtualSlot(handle, managerTable, function, interposed, reinterpret_cast<void*>(hook));
  context.interposedCalls->createRequest.store(untypedHook, std::memory_order_release);
  return isInTable;
}

QNetworkReply* callToolkit(const HostRequest& request) {
  return toolkitFunction(request.manager, request.operation, &request.request, request.body);
}

QNetworkReply* createRequest(const HostRequest& request) {
  QNetworkReply* reply = nullptr;
  if (router->hasProtocols()) {
    try {
      reply = letProtocolLoad(request);
    } catch (...) {
      // Memory ran out.
    }
  }
  return reply != nullptr ? reply : callToolkit(request);
}

}  // namespace tarnix::qt6::request_hook
