#include "platforms/linux/preload/interposed_calls.h"
#include "platforms/linux/preload/real_function.h"

namespace tarnix::linux_platform {

namespace {

using CreateRequest = void*(void*, int, const void*, void*);
using MakeManager = void(void*, void*);

constexpr LibraryNames libraries = {"libQt6Network.so.6", "libQt5Network.so.5"};
constexpr char createRequestName[] =
    "_ZN21QNetworkAccessManager13createRequestENS_9OperationERK15QNetworkRequestP9QIODevice";
constexpr char completeConstructorName[] = "_ZN21QNetworkAccessManagerC1EP7QObject";
constexpr char baseConstructorName[] = "_ZN21QNetworkAccessManagerC2EP7QObject";

constinit RealFunction realCreateRequest(createRequestName, libraries);
constinit RealFunction realCompleteConstructor(completeConstructorName, libraries);
constinit RealFunction realBaseConstructor(baseConstructorName, libraries);

void managerWasMade() {
  if (void (*const sessionWasMade)() =
          interposedCalls().sessionWasMade.load(std::memory_order_acquire)) {
    sessionWasMade();
  } else {
    interposedCalls().missedSessions.store(true, std::memory_order_release);
  }
}

}  // namespace

}  // namespace tarnix::linux_platform

// Member functions of the toolkit's network access manager, by the names that the loader knows them
// under. All arguments travel as plain integers and pointers, so plain functions can stand in.
extern "C" {

[[gnu::visibility("default")]] void*
tarnixprobe_createRequest(void* manager, int operation, const void* request, void* body) asm(
    "_ZN21QNetworkAccessManager13createRequestENS_9OperationERK15QNetworkRequestP9"
    "QIODevice");
[[gnu::visibility("default")]] void tarnixprobe_completeConstructor(
    void* manager, void* parent) asm("_ZN21QNetworkAccessManagerC1EP7QObject");
[[gnu::visibility("default")]] void tarnixprobe_baseConstructor(void* manager, void* parent) asm(
    "_ZN21QNetworkAccessManagerC2EP7QObject");

void* tarnixprobe_createRequest(void* manager, int operation, const void* request, void* body) {
  using namespace tarnix::linux_platform;
  CreateRequest* const ours = interposedCalls().createRequest.load(std::memory_order_acquire);
  CreateRequest* const function = ours != nullptr ? ours : realCreateRequest.as<CreateRequest>();
  return function(manager, operation, request, body);
}

void tarnixprobe_completeConstructor(void* manager, void* parent) {
  using namespace tarnix::linux_platform;
  realCompleteConstructor.as<MakeManager>()(manager, parent);
  managerWasMade();
}

void tarnixprobe_baseConstructor(void* manager, void* parent) {
  using namespace tarnix::linux_platform;
  realBaseConstructor.as<MakeManager>()(manager, parent);
  managerWasMade();
}
}
