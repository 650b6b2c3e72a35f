#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platforms/linux/descriptor.h"
#include "probe/platform/connection.h"
#include "probe/platform/listener.h"
#include "probe/platform/network.h"

namespace tarnix::contract {

/// The Linux network with a peer on a socket of its own, seen as every implementation is seen here.
class LinuxNetworkWorld {
 public:
  platform::Network& network();

  /// Waits, within a bound, until `condition` holds.
  bool pumpUntil(const std::function<bool()>& condition);

  /// Lets everything happen that has been caused.
  void settle();

  bool isOnQueue();

  void start(platform::Listener& listener) { listener.start(); }
  void peerConnects(const platform::Listener& listener);
  void start(platform::Connection& connection) { connection.start(); }

  void peerWrites(std::string_view bytes);
  void peerStopsReading() {}
  std::string peerReads(std::size_t size);
  void peerCloses();
  void peerBreaks();
  void forgetPeer() {}

 private:
  linux_platform::Descriptor peer_;
};

}  // namespace tarnix::contract
