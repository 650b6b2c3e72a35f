#include "platforms/linux/dnssd/daemon_registration.h"

#include <avahi-common/alternative.h>
#include <avahi-common/error.h>
#include <avahi-common/malloc.h>
#include <dbus/dbus.h>
#include <net/if.h>

#include <chrono>

namespace tarnix::linux_platform {

namespace {

/// What a daemon may take to come back, as when it is upgraded.
constexpr std::chrono::seconds restartPatience{15};
/// More hosts of one name than any machine has.
constexpr int maximumRenames = 100;

}  // namespace

DaemonRegistration::DaemonRegistration(const AdvertiseRequest& request)
    : request_(request),
      loop_(request),
      reconnect_(loop_.poll(),
                 [this] {
                   disconnect();
                   connect();
                 }),
      cleanUp_(loop_.poll(), [this] { endVerification(); }),
      patience_(loop_.poll(), [this] { giveUp("the mDNS daemon is gone"); }),
      name_(request.name),
      interface_(static_cast<int>(if_nametoindex(loopbackInterface))) {
  if (interface_ == 0) {
    giveUp("there is no loopback interface");
    return;
  }
  connect();
}

DaemonRegistration::~DaemonRegistration() { disconnect(); }

void DaemonRegistration::connect() {
  // Left alone, the message bus library makes the whole process ignore SIGPIPE.
  dbus_connection_set_change_sigpipe(FALSE);
  int error = 0;
  // Without this flag the call would have the bus start a daemon that nobody asked for.
  client_ = avahi_client_new(loop_.poll(), AVAHI_CLIENT_NO_FAIL, handleClient, this, &error);
  dbus_connection_set_change_sigpipe(TRUE);
  if (client_ == nullptr) {
    giveUp(std::string("mDNS daemon: ") + avahi_strerror(error));
  }
}

void DaemonRegistration::disconnect() {
  endVerification();
  group_ = nullptr;
  if (client_ != nullptr) {
    // Takes its groups and browsers with it.
    avahi_client_free(client_);
    client_ = nullptr;
  }
}

void DaemonRegistration::handleClient(AvahiClient* client, AvahiClientState state, void* self) {
  DaemonRegistration& registration = *static_cast<DaemonRegistration*>(self);
  switch (state) {
    case AVAHI_CLIENT_S_RUNNING:
      registration.patience_.clear();
      registration.registerService(client);
      break;
    case AVAHI_CLIENT_S_REGISTERING:
    case AVAHI_CLIENT_S_COLLISION:
      // The machine changes its name; the service is registered again when it has one.
      if (registration.group_ != nullptr) {
        avahi_entry_group_reset(registration.group_);
      }
      break;
    case AVAHI_CLIENT_CONNECTING:
      if (!registration.wasRegistered_) {
        registration.giveUp("no mDNS daemon runs");
      }
      break;
    case AVAHI_CLIENT_FAILURE:
      if (avahi_client_errno(client) != AVAHI_ERR_DISCONNECTED || !registration.wasRegistered_) {
        registration.giveUp(std::string("mDNS daemon: ") +
                            avahi_strerror(avahi_client_errno(client)));
        break;
      }
      registration.patience_.set(restartPatience);
      registration.reconnect_.set({});
      break;
  }
}

void DaemonRegistration::registerService(AvahiClient* client) {
  if (group_ == nullptr) {
    group_ = avahi_entry_group_new(client, handleGroup, this);
  }
  if (group_ == nullptr) {
    giveUp(std::string("mDNS daemon: ") + avahi_strerror(avahi_client_errno(client)));
    return;
  }
  int error = AVAHI_ERR_COLLISION;
  for (int turn = 0; error == AVAHI_ERR_COLLISION && turn < maximumRenames; ++turn) {
    error = avahi_entry_group_add_service(group_, interface_, AVAHI_PROTO_UNSPEC, {}, name_.c_str(),
                                          request_.type, nullptr, nullptr, request_.port, nullptr);
    if (error == AVAHI_ERR_COLLISION) {
      // Another client of the same daemon has the name.
      rename();
      avahi_entry_group_reset(group_);
    }
  }
  if (error == AVAHI_OK) {
    error = avahi_entry_group_commit(group_);
  }
  if (error < 0) {
    giveUp(std::string("mDNS daemon: ") + avahi_strerror(error));
  }
}

void DaemonRegistration::rename() {
  char* const alternative = avahi_alternative_service_name(name_.c_str());
  if (alternative != nullptr) {
    name_ = alternative;
    avahi_free(alternative);
  }
}

void DaemonRegistration::handleGroup(AvahiEntryGroup* group, AvahiEntryGroupState state,
                                     void* self) {
  DaemonRegistration& registration = *static_cast<DaemonRegistration*>(self);
  AvahiClient* const client = avahi_entry_group_get_client(group);
  switch (state) {
    case AVAHI_ENTRY_GROUP_ESTABLISHED:
      registration.wasRegistered_ = true;
      registration.verify(client);
      break;
    case AVAHI_ENTRY_GROUP_COLLISION:
      // A responder beside the daemon has it.
      registration.rename();
      avahi_entry_group_reset(group);
      registration.registerService(client);
      break;
    case AVAHI_ENTRY_GROUP_FAILURE:
      registration.giveUp(std::string("mDNS daemon: ") +
                          avahi_strerror(avahi_client_errno(client)));
      break;
    case AVAHI_ENTRY_GROUP_UNCOMMITED:
    case AVAHI_ENTRY_GROUP_REGISTERING:
      break;
  }
}

/// A daemon that is set up to leave the loopback interface out accepts the service, and then tells
/// nobody. Looking for it once finds that out.
void DaemonRegistration::verify(AvahiClient* client) {
  if (isVerified_ || browser_ != nullptr) {
    return;
  }
  browser_ = avahi_service_browser_new(client, interface_, AVAHI_PROTO_UNSPEC, request_.type,
                                       nullptr, {}, handleBrowser, this);
}

void DaemonRegistration::handleBrowser(AvahiServiceBrowser*, AvahiIfIndex, AvahiProtocol,
                                       AvahiBrowserEvent event, const char* name, const char*,
                                       const char*, AvahiLookupResultFlags, void* self) {
  DaemonRegistration& registration = *static_cast<DaemonRegistration*>(self);
  switch (event) {
    case AVAHI_BROWSER_NEW:
      if (registration.name_ == name) {
        registration.isSeen_ = true;
        registration.cleanUp_.set({});
      }
      break;
    case AVAHI_BROWSER_ALL_FOR_NOW:
      if (!registration.isSeen_) {
        registration.giveUp("the mDNS daemon leaves the loopback interface out");
      }
      break;
    case AVAHI_BROWSER_FAILURE:
      // Nothing is known then, which is no reason to take the service back.
      registration.cleanUp_.set({});
      break;
    case AVAHI_BROWSER_REMOVE:
    case AVAHI_BROWSER_CACHE_EXHAUSTED:
      break;
  }
}

void DaemonRegistration::endVerification() {
  if (browser_ != nullptr) {
    isVerified_ = true;
    avahi_service_browser_free(browser_);
    browser_ = nullptr;
  }
}

}  // namespace tarnix::linux_platform
