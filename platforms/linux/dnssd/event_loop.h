#pragma once

#include <avahi-common/simple-watch.h>
#include <avahi-common/watch.h>

#include <map>
#include <string>

#include "platforms/linux/dnssd/advertise.h"

namespace tarnix::linux_platform {

/// The loop of one announcement: sleeps until the network, the message bus, a timer or the request
/// to stop has something to say. One at a time in a process, on one thread.
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
  static AvahiWatch* watchNew(const AvahiPoll* api, int descriptor, AvahiWatchEvent events,
                              AvahiWatchCallback callback, void* userdata);
  static void watchFree(AvahiWatch* watch);
  static void handleStop(AvahiWatch*, int, AvahiWatchEvent, void* self);

  const AdvertiseRequest& request_;
  AvahiSimplePoll* const simple_;
  /// Avahi's own, but for the functions that make and free watches: those also keep the
  /// descriptors from the host's children.
  AvahiPoll poll_;
  const AvahiPoll* own_ = nullptr;
  std::map<AvahiWatch*, int> descriptors_;
  AdvertiseOutcome outcome_ = AdvertiseOutcome::stopped;
};

}  // namespace tarnix::linux_platform
