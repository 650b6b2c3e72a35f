#pragma once

#include <atomic>
#include <mutex>

#include "platforms/qt6/shared/network_part.h"

namespace tarnix::qt6 {

/// Brings in the network part once the host makes its first network access manager. Any thread.
class NetworkPartLoader {
 public:
  static NetworkPartLoader& shared();

  /// Starts to wait for that moment. Once, on the loading thread; nothing without `calls`.
  void start(RequestRouter& router, InterposedCalls* calls);

 private:
  NetworkPartLoader() = default;
  static void sessionWasMade();
  void load() noexcept;

  NetworkPartContext context_;
  std::once_flag loaded_;
};

}  // namespace tarnix::qt6
