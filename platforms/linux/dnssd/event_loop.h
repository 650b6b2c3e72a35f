#pragma once

#include <avahi-common/watch.h>

#include <list>
#include <string>

#include "platforms/linux/dnssd/advertise.h"

namespace tarnix::linux_platform {

/// The loop of one announcement: sleeps until the network, the message bus, a timer or the request
/// to stop has something to say. Avahi's own loop would do, but for the descriptors that it leaves
/// open in the host's children. One thread.
class EventLoop {
 public:
  explicit EventLoop(const AdvertiseRequest& request);
  ~EventLoop();
  EventLoop(const EventLoop&) = delete;
  EventLoop& operator=(const EventLoop&) = delete;

  const AvahiPoll* poll() const { return &poll_; }

  /// Returns when told to stop, or after `giveUp`.
  AdvertiseOutcome run();

  /// Ends `run` and reports the reason.
  void giveUp(const std::string& reason);

 private:
  /// Milliseconds until the first timer; -1 when there is none.
  int nextTimeout() const;
  bool wait();
  void runTimers();
  void runWatches();
  /// Watches and timers end while others of them run; they go when none does.
  void removeDead();

  const AdvertiseRequest& request_;
  AvahiPoll poll_{};
  std::list<AvahiWatch> watches_;
  std::list<AvahiTimeout> timeouts_;
  bool isEnding_ = false;
  AdvertiseOutcome outcome_ = AdvertiseOutcome::stopped;
};

}  // namespace tarnix::linux_platform
