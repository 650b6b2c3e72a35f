#pragma once

#include <avahi-core/core.h>
#include <avahi-core/publish.h>

#include <string>

#include "platforms/linux/dnssd/advertise.h"
#include "platforms/linux/dnssd/event_loop.h"

namespace tarnix::linux_platform {

/// Announces the service itself, for machines on which no mDNS daemon runs. It listens and answers
/// on the loopback interface only, beside the responders of other hosts. One thread.
class Responder {
 public:
  explicit Responder(const AdvertiseRequest& request);
  ~Responder();
  Responder(const Responder&) = delete;
  Responder& operator=(const Responder&) = delete;

  AdvertiseOutcome run() { return loop_.run(); }

 private:
  static void handleServer(AvahiServer* server, AvahiServerState state, void* self);
  static void handleGroup(AvahiServer* server, AvahiSEntryGroup* group, AvahiEntryGroupState state,
                          void* self);

  void registerService(AvahiServer* server);
  void rename();
  void giveUp(int error);

  const AdvertiseRequest& request_;
  EventLoop loop_;
  std::string name_;
  int interface_ = 0;
  AvahiServer* server_ = nullptr;
  AvahiSEntryGroup* group_ = nullptr;
};

}  // namespace tarnix::linux_platform
