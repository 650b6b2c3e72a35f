#include "platforms/linux/dnssd/event_loop.h"

#include <avahi-common/timeval.h>
#include <fcntl.h>
#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

using tarnix::linux_platform::AdvertiseRequest;

// The library knows these two by name only and leaves it to the loop what they are.

struct AvahiWatch {
  const AdvertiseRequest* request;
  int descriptor;
  AvahiWatchEvent awaited;
  AvahiWatchEvent happened;
  AvahiWatchCallback callback;
  void* userdata;
  bool isDead;
};

struct AvahiTimeout {
  std::optional<timeval> time;
  AvahiTimeoutCallback callback;
  void* userdata;
  bool isDead;
};

namespace tarnix::linux_platform {

namespace {

std::optional<timeval> copied(const timeval* time) {
  return time == nullptr ? std::nullopt : std::optional(*time);
}

/// Microseconds that a time of day is past; negative while it is to come.
AvahiUsec age(const timeval& time) { return avahi_age(&time); }

}  // namespace

EventLoop::EventLoop(const AdvertiseRequest& request) : request_(request) {
  poll_.userdata = this;
  poll_.watch_new = [](const AvahiPoll* api, int descriptor, AvahiWatchEvent events,
                       AvahiWatchCallback callback, void* userdata) -> AvahiWatch* {
    EventLoop& self = *static_cast<EventLoop*>(api->userdata);
    // Not every socket that the library opens comes so.
    ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    self.request_.closeInChild(descriptor);
    return &self.watches_.emplace_back(
        AvahiWatch{&self.request_, descriptor, events, {}, callback, userdata, false});
  };
  poll_.watch_update = [](AvahiWatch* watch, AvahiWatchEvent events) { watch->awaited = events; };
  poll_.watch_get_events = [](AvahiWatch* watch) { return watch->happened; };
  poll_.watch_free = [](AvahiWatch* watch) {
    watch->request->forget(watch->descriptor);
    watch->isDead = true;
  };
  poll_.timeout_new = [](const AvahiPoll* api, const timeval* time, AvahiTimeoutCallback callback,
                         void* userdata) -> AvahiTimeout* {
    return &static_cast<EventLoop*>(api->userdata)
                ->timeouts_.emplace_back(AvahiTimeout{copied(time), callback, userdata, false});
  };
  poll_.timeout_update = [](AvahiTimeout* timeout, const timeval* time) {
    timeout->time = copied(time);
  };
  poll_.timeout_free = [](AvahiTimeout* timeout) { timeout->isDead = true; };
}

EventLoop::~EventLoop() = default;

AdvertiseOutcome EventLoop::run() {
  while (!isEnding_) {
    removeDead();
    if (!wait()) {
      giveUp("waiting for events failed");
      break;
    }
    runTimers();
    runWatches();
  }
  return outcome_;
}

void EventLoop::giveUp(const std::string& reason) {
  if (std::exchange(outcome_, AdvertiseOutcome::unavailable) == AdvertiseOutcome::stopped) {
    request_.report(reason.c_str());
  }
  isEnding_ = true;
}

int EventLoop::nextTimeout() const {
  constexpr AvahiUsec microsecondsInMillisecond = 1000;
  std::optional<AvahiUsec> nearest;
  for (const AvahiTimeout& timeout : timeouts_) {
    if (timeout.time) {
      const AvahiUsec remaining = std::max<AvahiUsec>(-age(*timeout.time), 0);
      nearest = std::min(nearest.value_or(remaining), remaining);
    }
  }
  if (!nearest) {
    return -1;
  }
  // Rounded up: woken too early, the loop would turn once more for nothing.
  return static_cast<int>(std::min<AvahiUsec>(
      (*nearest + microsecondsInMillisecond - 1) / microsecondsInMillisecond, INT_MAX));
}

bool EventLoop::wait() {
  std::vector<pollfd> descriptors{{request_.stopDescriptor, POLLIN, 0}};
  for (const AvahiWatch& watch : watches_) {
    descriptors.push_back({watch.descriptor, static_cast<short>(watch.awaited), 0});
  }
  if (::poll(descriptors.data(), descriptors.size(), nextTimeout()) < 0 && errno != EINTR) {
    return false;
  }
  isEnding_ = isEnding_ || descriptors[0].revents != 0;
  auto descriptor = descriptors.begin();
  for (AvahiWatch& watch : watches_) {
    watch.happened = static_cast<AvahiWatchEvent>((++descriptor)->revents);
  }
  return true;
}

void EventLoop::runTimers() {
  // Those that a callback adds stand at the end and wait for the next turn; none is removed here.
  std::size_t count = timeouts_.size();
  for (auto timeout = timeouts_.begin(); !isEnding_ && count > 0; ++timeout, --count) {
    if (!timeout->isDead && timeout->time && age(*timeout->time) >= 0) {
      timeout->time.reset();
      timeout->callback(&*timeout, timeout->userdata);
    }
  }
}

void EventLoop::runWatches() {
  for (AvahiWatch& watch : watches_) {
    if (!isEnding_ && !watch.isDead && watch.happened != AvahiWatchEvent{}) {
      watch.callback(&watch, watch.descriptor, watch.happened, watch.userdata);
      watch.happened = {};
    }
  }
}

void EventLoop::removeDead() {
  watches_.remove_if([](const AvahiWatch& watch) { return watch.isDead; });
  timeouts_.remove_if([](const AvahiTimeout& timeout) { return timeout.isDead; });
}

}  // namespace tarnix::linux_platform
