#include <avahi-core/core.h>
#include <avahi-core/log.h>
#include <avahi-core/lookup.h>
#include <net/if.h>

#include "companion/discovery/browse_state.h"
#include "companion/discovery/service_browser.h"

namespace tarnix::companion {
namespace {

struct ServerDeleter {
  // Frees the browsers and resolvers that are still alive, too.
  void operator()(AvahiServer* server) const { avahi_server_free(server); }
};

/// What a search needs beyond its state: a browser does not know its server.
struct Search {
  BrowseState state;
  AvahiServer* server = nullptr;
};

Search& searchOf(void* userData) { return *static_cast<Search*>(userData); }

void serverChanged(AvahiServer*, AvahiServerState serverState, void* userData) {
  if (serverState == AVAHI_SERVER_FAILURE) {
    searchOf(userData).state.failed = true;
  }
}

void resolved(AvahiSServiceResolver* resolver, AvahiIfIndex, AvahiProtocol,
              AvahiResolverEvent event, const char* name, const char*, const char*, const char*,
              const AvahiAddress*, std::uint16_t port, AvahiStringList*, AvahiLookupResultFlags,
              void* userData) {
  BrowseState& state = searchOf(userData).state;
  if (event == AVAHI_RESOLVER_FOUND) {
    state.add(name, port);
  }
  --state.unresolved;
  avahi_s_service_resolver_free(resolver);
}

void browsed(AvahiSServiceBrowser*, AvahiIfIndex interface, AvahiProtocol protocol,
             AvahiBrowserEvent event, const char* name, const char* type, const char* domain,
             AvahiLookupResultFlags, void* userData) {
  Search& search = searchOf(userData);
  switch (event) {
    case AVAHI_BROWSER_NEW:
      if (avahi_s_service_resolver_new(search.server, interface, protocol, name, type, domain,
                                       AVAHI_PROTO_UNSPEC, static_cast<AvahiLookupFlags>(0),
                                       resolved, userData)) {
        ++search.state.unresolved;
      }
      break;
    case AVAHI_BROWSER_ALL_FOR_NOW:
      search.state.allReported = true;
      break;
    case AVAHI_BROWSER_FAILURE:
      search.state.failed = true;
      break;
    case AVAHI_BROWSER_REMOVE:
    case AVAHI_BROWSER_CACHE_EXHAUSTED:
      break;
  }
}

/// A server that announces nothing of its own and keeps to the loopback interface.
class SilentConfiguration {
 public:
  SilentConfiguration() {
    avahi_server_config_init(&config_);
    config_.publish_hinfo = 0;
    config_.publish_addresses = 0;
    config_.publish_workstation = 0;
    config_.publish_domain = 0;
    config_.allow_interfaces = avahi_string_list_add(nullptr, loopbackInterface);
  }
  ~SilentConfiguration() { avahi_server_config_free(&config_); }
  SilentConfiguration(const SilentConfiguration&) = delete;
  SilentConfiguration& operator=(const SilentConfiguration&) = delete;

  const AvahiServerConfig* get() const { return &config_; }

 private:
  AvahiServerConfig config_{};
};

}  // namespace

std::optional<std::vector<AnnouncedService>> browseOnLoopback(Deadline deadline) {
  // Avahi would report to standard error what is of no use to a user of this program.
  avahi_set_log_function([](AvahiLogLevel, const char*) {});
  Search search;
  const SimplePoll poll(avahi_simple_poll_new());
  const unsigned loopback = if_nametoindex(loopbackInterface);
  if (!poll || loopback == 0) {
    return std::nullopt;
  }
  const SilentConfiguration configuration;
  int error = 0;
  const std::unique_ptr<AvahiServer, ServerDeleter> server(avahi_server_new(
      avahi_simple_poll_get(poll.get()), configuration.get(), serverChanged, &search, &error));
  if (!server) {
    return std::nullopt;
  }
  search.server = server.get();
  if (!avahi_s_service_browser_new(server.get(), static_cast<AvahiIfIndex>(loopback),
                                   AVAHI_PROTO_UNSPEC, serviceType, nullptr,
                                   static_cast<AvahiLookupFlags>(0), browsed, &search)) {
    return std::nullopt;
  }
  runBrowse(poll.get(), search.state, deadline);
  if (search.state.failed && search.state.services.empty()) {
    return std::nullopt;
  }
  return std::move(search.state.services);
}

}  // namespace tarnix::companion
