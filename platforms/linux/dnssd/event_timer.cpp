#include "platforms/linux/dnssd/event_timer.h"

#include <avahi-common/timeval.h>

#include <utility>

namespace tarnix::linux_platform {

EventTimer::EventTimer(const AvahiPoll* poll, std::function<void()> closure)
    : poll_(poll),
      closure_(std::move(closure)),
      timeout_(poll->timeout_new(
          poll, nullptr,
          [](AvahiTimeout*, void* self) { static_cast<EventTimer*>(self)->closure_(); }, this)) {}

EventTimer::~EventTimer() { poll_->timeout_free(timeout_); }

void EventTimer::set(std::chrono::milliseconds delay) {
  timeval time{};
  avahi_elapse_time(&time, static_cast<unsigned>(delay.count()), 0);
  poll_->timeout_update(timeout_, &time);
}

void EventTimer::clear() { poll_->timeout_update(timeout_, nullptr); }

}  // namespace tarnix::linux_platform
