#include "platforms/linux/preload/session_calls.h"

#include <dlfcn.h>

namespace tarnix::linux_platform {

namespace {

constinit InterposedCalls calls;

/// The toolkit's own function. It cannot be had by the default search, which finds ours; and the
/// library may have been loaded by a plugin for itself, where a search behind ours does not see it.
void* findReal(const char* name) {
  for (const char* library : {"libQt6Network.so.6", "libQt5Network.so.5"}) {
    // Never closed: the function stays in use.
    if (void* const handle = dlopen(library, RTLD_LAZY | RTLD_NOLOAD)) {
      if (void* const function = dlsym(handle, name)) {
        return function;
      }
    }
  }
  return dlsym(RTLD_NEXT, name);
}

/// Finds a function once and remembers it.
class RealFunction {
 public:
  explicit constexpr RealFunction(const char* name) : name_(name) {}

  template <class Function>
  Function* as() {
    void* function = found_.load(std::memory_order_acquire);
    if (function == nullptr) {
      function = findReal(name_);
      found_.store(function, std::memory_order_release);
    }
    return reinterpret_cast<Function*>(function);
  }

 private:
  const char* name_;
  std::atomic<void*> found_ = nullptr;
};

using CreateRequest = void*(void*, int, const void*, void*);
using MakeManager = void(void*, void*);

constexpr char createRequestName[] =
    "_ZN21QNetworkAccessManager13createRequestENS_9OperationERK15QNetworkRequestP9QIODevice";
constexpr char completeConstructorName[] = "_ZN21QNetworkAccessManagerC1EP7QObject";
constexpr char baseConstructorName[] = "_ZN21QNetworkAccessManagerC2EP7QObject";

constinit RealFunction realCreateRequest(createRequestName);
constinit RealFunction realCompleteConstructor(completeConstructorName);
constinit RealFunction realBaseConstructor(baseConstructorName);

void managerWasMade() {
  if (void (*const sessionWasMade)() = calls.sessionWasMade.load(std::memory_order_acquire)) {
    sessionWasMade();
  } else {
    calls.missedSessions.store(true, std::memory_order_release);
  }
}

}  // namespace

InterposedCalls& interposedCalls() { return calls; }

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
  CreateRequest* const ours = calls.createRequest.load(std::memory_order_acquire);
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
