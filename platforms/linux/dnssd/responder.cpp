#include "platforms/linux/dnssd/responder.h"

#include <avahi-common/address.h>
#include <avahi-common/alternative.h>
#include <avahi-common/error.h>
#include <avahi-common/malloc.h>
#include <avahi-common/strlst.h>
#include <avahi-core/log.h>
#include <net/if.h>
#include <unistd.h>

namespace tarnix::linux_platform {

namespace {

/// A configuration as the library takes it, freed with what hangs on it.
class ServerConfig {
 public:
  ServerConfig() {
    avahi_server_config_init(&config_);
    // A name of this process's own: the machine's name belongs to whoever announces the machine.
    config_.host_name = avahi_strdup(("tarnixprobe-" + std::to_string(getpid())).c_str());
    config_.allow_interfaces = avahi_string_list_new(loopbackInterface, nullptr);
    // The loopback interface has no multicast route for IPv6.
    config_.use_ipv6 = 0;
    // The library would claim the address's reverse name for this process, as every other host
    // does for itself.
    config_.publish_addresses = 0;
    config_.publish_hinfo = 0;
    config_.publish_workstation = 0;
    config_.publish_domain = 0;
    config_.enable_wide_area = 0;
    config_.enable_reflector = 0;
    config_.disallow_other_stacks = 0;
  }
  ~ServerConfig() { avahi_server_config_free(&config_); }
  ServerConfig(const ServerConfig&) = delete;
  ServerConfig& operator=(const ServerConfig&) = delete;

  const AvahiServerConfig* get() const { return &config_; }

 private:
  AvahiServerConfig config_{};
};

}  // namespace

Responder::Responder(const AdvertiseRequest& request)
    : request_(request),
      loop_(request),
      name_(request.name),
      interface_(static_cast<int>(if_nametoindex(loopbackInterface))) {
  if (interface_ == 0) {
    loop_.giveUp("there is no loopback interface");
    return;
  }
  // The library would write to the host's standard error.
  avahi_set_log_function([](AvahiLogLevel, const char*) {});
  const ServerConfig config;
  int error = 0;
  server_ = avahi_server_new(loop_.poll(), config.get(), handleServer, this, &error);
  if (server_ == nullptr) {
    giveUp(error);
  }
}

Responder::~Responder() {
  if (server_ != nullptr) {
    // Says good-bye, so that nobody lists a host that is gone.
    avahi_server_free(server_);
  }
}

void Responder::handleServer(AvahiServer* server, AvahiServerState state, void* self) {
  Responder& responder = *static_cast<Responder*>(self);
  switch (state) {
    case AVAHI_SERVER_RUNNING:
      responder.registerService(server);
      break;
    case AVAHI_SERVER_FAILURE:
      responder.giveUp(avahi_server_errno(server));
      break;
    case AVAHI_SERVER_INVALID:
    case AVAHI_SERVER_REGISTERING:
    case AVAHI_SERVER_COLLISION:
      // These are about the machine's own records, of which there are none.
      break;
  }
}

void Responder::registerService(AvahiServer* server) {
  if (group_ == nullptr) {
    group_ = avahi_s_entry_group_new(server, handleGroup, this);
  }
  if (group_ == nullptr) {
    giveUp(avahi_server_errno(server));
    return;
  }
  AvahiAddress address{};
  avahi_address_parse("127.0.0.1", AVAHI_PROTO_INET, &address);
  int error = avahi_server_add_address(server, group_, interface_, AVAHI_PROTO_UNSPEC,
                                       AVAHI_PUBLISH_NO_REVERSE,
                                       avahi_server_get_host_name_fqdn(server), &address);
  if (error == AVAHI_OK) {
    error =
        avahi_server_add_service(server, group_, interface_, AVAHI_PROTO_UNSPEC, {}, name_.c_str(),
                                 request_.type, nullptr, nullptr, request_.port, nullptr);
  }
  if (error == AVAHI_OK) {
    error = avahi_s_entry_group_commit(group_);
  }
  if (error < 0) {
    giveUp(error);
  }
}

void Responder::rename() {
  char* const alternative = avahi_alternative_service_name(name_.c_str());
  if (alternative != nullptr) {
    name_ = alternative;
    avahi_free(alternative);
  }
}

void Responder::giveUp(int error) {
  loop_.giveUp(std::string("mDNS responder: ") + avahi_strerror(error));
}

void Responder::handleGroup(AvahiServer* server, AvahiSEntryGroup* group,
                            AvahiEntryGroupState state, void* self) {
  Responder& responder = *static_cast<Responder*>(self);
  switch (state) {
    case AVAHI_ENTRY_GROUP_COLLISION:
      responder.rename();
      avahi_s_entry_group_reset(group);
      responder.registerService(server);
      break;
    case AVAHI_ENTRY_GROUP_FAILURE:
      responder.giveUp(avahi_server_errno(server));
      break;
    case AVAHI_ENTRY_GROUP_UNCOMMITED:
    case AVAHI_ENTRY_GROUP_REGISTERING:
    case AVAHI_ENTRY_GROUP_ESTABLISHED:
      break;
  }
}

}  // namespace tarnix::linux_platform
