#pragma once

#include <avahi-client/client.h>
#include <avahi-client/lookup.h>
#include <avahi-client/publish.h>

#include <memory>
#include <string>

#include "platforms/linux/dnssd/advertise.h"
#include "platforms/linux/dnssd/event_loop.h"
#include "platforms/linux/dnssd/event_timer.h"

namespace tarnix::linux_platform {

/// Has the system's mDNS daemon announce the service, under another name where the name is taken,
/// and again after the daemon was restarted. Gives up where no daemon runs, or where the one that
/// runs leaves the loopback interface out. One thread.
class DaemonRegistration {
 public:
  explicit DaemonRegistration(const AdvertiseRequest& request);
  ~DaemonRegistration();
  DaemonRegistration(const DaemonRegistration&) = delete;
  DaemonRegistration& operator=(const DaemonRegistration&) = delete;

  AdvertiseOutcome run() { return loop_.run(); }

 private:
  static void handleClient(AvahiClient* client, AvahiClientState state, void* self);
  static void handleGroup(AvahiEntryGroup* group, AvahiEntryGroupState state, void* self);
  static void handleBrowser(AvahiServiceBrowser* browser, AvahiIfIndex interface,
                            AvahiProtocol protocol, AvahiBrowserEvent event, const char* name,
                            const char* type, const char* domain, AvahiLookupResultFlags flags,
                            void* self);

  void connect();
  void disconnect();
  void registerService(AvahiClient* client);
  void rename();
  void verify(AvahiClient* client);
  void endVerification();
  void giveUp(const std::string& reason) { loop_.giveUp(reason); }

  const AdvertiseRequest& request_;
  EventLoop loop_;
  /// Objects of the client library must not be freed by the callbacks that they call.
  EventTimer reconnect_;
  EventTimer cleanUp_;
  /// Runs while a daemon that was there is missed.
  EventTimer patience_;
  std::string name_;
  int interface_ = 0;
  bool wasRegistered_ = false;
  bool isVerified_ = false;
  bool isSeen_ = false;
  AvahiClient* client_ = nullptr;
  AvahiEntryGroup* group_ = nullptr;
  AvahiServiceBrowser* browser_ = nullptr;
};

}  // namespace tarnix::linux_platform
