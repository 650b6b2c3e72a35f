#include "platforms/qt6/base/network_part_loader.h"

#include "platforms/qt6/base/part_module.h"

namespace tarnix::qt6 {

namespace {

constexpr const char* fileName = "libtarnixprobe-qt6-network.so";

}  // namespace

NetworkPartLoader& NetworkPartLoader::shared() {
  static NetworkPartLoader& instance = *new NetworkPartLoader;
  return instance;
}

void NetworkPartLoader::start(RequestRouter& router, InterposedCalls* calls) {
  if (calls == nullptr) {
    return;
  }
  context_ = {&router, calls};
  calls->sessionWasMade.store(sessionWasMade, std::memory_order_release);
  // A library of the host may have made one while it was itself being loaded.
  if (calls->missedSessions.load(std::memory_order_acquire)) {
    sessionWasMade();
  }
}

void NetworkPartLoader::sessionWasMade() { shared().load(); }

void NetworkPartLoader::load() noexcept {
  std::call_once(loaded_, [this]() noexcept {
    try {
      void* const entry = loadPart(fileName, networkPartEntryName);
      if (entry != nullptr) {
        reinterpret_cast<NetworkPartEntry>(entry)(&context_);
      }
    } catch (...) {
      // Memory ran out. The host's requests go on unseen.
    }
    // There is nothing more to wait for.
    // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): started with calls, or never called.
    context_.interposedCalls->sessionWasMade.store([] {}, std::memory_order_release);
  });
}

}  // namespace tarnix::qt6
