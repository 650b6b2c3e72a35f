#include "platforms/linux/dnssd/event_loop.h"

#include <utility>

namespace tarnix::linux_platform {

namespace {

/// The functions that free a watch are told nothing else.
constinit EventLoop* activeLoop = nullptr;

}  // namespace

EventLoop::EventLoop(const AdvertiseRequest& request)
    : request_(request), simple_(avahi_simple_poll_new()), poll_() {
  activeLoop = this;
  if (simple_ == nullptr) {
    giveUp("out of memory");
    return;
  }
  own_ = avahi_simple_poll_get(simple_);
  poll_ = *own_;
  poll_.watch_new = watchNew;
  poll_.watch_free = watchFree;
  own_->watch_new(own_, request.stopDescriptor, AVAHI_WATCH_IN, handleStop, this);
}

EventLoop::~EventLoop() {
  if (simple_ != nullptr) {
    avahi_simple_poll_free(simple_);
  }
  activeLoop = nullptr;
}

AdvertiseOutcome EventLoop::run() {
  // Given up before it began when something failed while it was set up.
  if (outcome_ == AdvertiseOutcome::stopped && avahi_simple_poll_loop(simple_) < 0) {
    giveUp("waiting for events failed");
  }
  return outcome_;
}

void EventLoop::giveUp(const std::string& reason) {
  if (std::exchange(outcome_, AdvertiseOutcome::unavailable) == AdvertiseOutcome::stopped) {
    request_.report(reason.c_str());
  }
  if (simple_ != nullptr) {
    avahi_simple_poll_quit(simple_);
  }
}

AvahiWatch* EventLoop::watchNew(const AvahiPoll*, int descriptor, AvahiWatchEvent events,
                                AvahiWatchCallback callback, void* userdata) {
  EventLoop& self = *activeLoop;
  AvahiWatch* const watch = self.own_->watch_new(self.own_, descriptor, events, callback, userdata);
  if (watch != nullptr) {
    self.descriptors_[watch] = descriptor;
    self.request_.closeInChild(descriptor);
  }
  return watch;
}

void EventLoop::watchFree(AvahiWatch* watch) {
  EventLoop& self = *activeLoop;
  if (const auto entry = self.descriptors_.find(watch); entry != self.descriptors_.end()) {
    self.request_.forget(entry->second);
    self.descriptors_.erase(entry);
  }
  self.own_->watch_free(watch);
}

void EventLoop::handleStop(AvahiWatch*, int, AvahiWatchEvent, void* self) {
  avahi_simple_poll_quit(static_cast<EventLoop*>(self)->simple_);
}

}  // namespace tarnix::linux_platform
