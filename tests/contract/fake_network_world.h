#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "probe/platform/connection.h"
#include "probe/platform/listener.h"
#include "probe/platform/network.h"
#include "tests/fakes/fake_network.h"

namespace tarnix::contract {

/// The fake network with a peer at its other end, seen as every implementation is seen here.
class FakeNetworkWorld {
 public:
  platform::Network& network() { return network_; }

  /// Runs what is outstanding until `condition` holds; false when it never does.
  bool pumpUntil(const std::function<bool()>& condition) {
    while (!condition()) {
      if (!network_.serialQueue.runReady()) {
        return condition();
      }
    }
    return true;
  }

  /// Lets everything happen that has been caused.
  void settle() { network_.serialQueue.runReady(); }

  bool isOnQueue() const { return network_.serialQueue.isRunning(); }

  void start(platform::Listener& listener) {
    listener.start();
    network_.listenerBecomes(platform::ListenerState::ready);
  }

  /// A peer connects to the newest listener.
  void peerConnects(const platform::Listener&) { peer_ = network_.connect(); }

  void start(platform::Connection& connection) {
    connection.start();
    peer_->becomeReady();
  }

  void peerWrites(std::string_view bytes) { peer_->arrive(bytes); }
  void peerStopsReading() { peer_->isReading = false; }
  /// What the peer has read, once it is `size` bytes.
  std::string peerReads(std::size_t) { return peer_->written; }
  void peerCloses() { peer_->closeByPeer(); }
  void peerBreaks() { peer_->fail(); }
  /// The connection must live by what it does, not by what the test holds.
  void forgetPeer() { peer_.reset(); }

 private:
  fakes::FakeNetwork network_;
  std::shared_ptr<fakes::FakeConnection> peer_;
};

}  // namespace tarnix::contract
