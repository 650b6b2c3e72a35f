#include <avahi-client/client.h>
#include <avahi-client/lookup.h>
#include <net/if.h>

#include "companion/discovery/browse_state.h"
#include "companion/discovery/service_browser.h"

namespace tarnix::companion {
namespace {

struct ClientDeleter {
  // Frees the browsers and resolvers that are still alive, too.
  void operator()(AvahiClient* client) const { avahi_client_free(client); }
};

BrowseState& stateOf(void* userData) { return *static_cast<BrowseState*>(userData); }

void clientChanged(AvahiClient*, AvahiClientState clientState, void* userData) {
  if (clientState == AVAHI_CLIENT_FAILURE) {
    stateOf(userData).failed = true;
  }
}

void resolved(AvahiServiceResolver* resolver, AvahiIfIndex, AvahiProtocol, AvahiResolverEvent event,
              const char* name, const char*, const char*, const char*, const AvahiAddress*,
              std::uint16_t port, AvahiStringList*, AvahiLookupResultFlags, void* userData) {
  BrowseState& state = stateOf(userData);
  if (event == AVAHI_RESOLVER_FOUND) {
    state.add(name, port);
  }
  --state.unresolved;
  avahi_service_resolver_free(resolver);
}

void browsed(AvahiServiceBrowser* browser, AvahiIfIndex interface, AvahiProtocol protocol,
             AvahiBrowserEvent event, const char* name, const char* type, const char* domain,
             AvahiLookupResultFlags, void* userData) {
  BrowseState& state = stateOf(userData);
  switch (event) {
    case AVAHI_BROWSER_NEW:
      if (avahi_service_resolver_new(avahi_service_browser_get_client(browser), interface, protocol,
                                     name, type, domain, AVAHI_PROTO_UNSPEC,
                                     static_cast<AvahiLookupFlags>(0), resolved, userData)) {
        ++state.unresolved;
      }
      break;
    case AVAHI_BROWSER_ALL_FOR_NOW:
      state.allReported = true;
      break;
    case AVAHI_BROWSER_FAILURE:
      state.failed = true;
      break;
    case AVAHI_BROWSER_REMOVE:
    case AVAHI_BROWSER_CACHE_EXHAUSTED:
      break;
  }
}

}  // namespace

std::optional<std::vector<AnnouncedService>> browseThroughDaemon(Deadline deadline) {
  BrowseState state;
  const SimplePoll poll(avahi_simple_poll_new());
  if (!poll) {
    return std::nullopt;
  }
  int error = 0;
  const std::unique_ptr<AvahiClient, ClientDeleter> client(
      avahi_client_new(avahi_simple_poll_get(poll.get()), static_cast<AvahiClientFlags>(0),
                       clientChanged, &state, &error));
  if (!client) {
    return std::nullopt;
  }
  const unsigned loopback = if_nametoindex(loopbackInterface);
  if (loopback == 0 ||
      !avahi_service_browser_new(client.get(), static_cast<AvahiIfIndex>(loopback),
                                 AVAHI_PROTO_UNSPEC, serviceType, nullptr,
                                 static_cast<AvahiLookupFlags>(0), browsed, &state)) {
    return std::nullopt;
  }
  runBrowse(poll.get(), state, deadline);
  if (state.failed && state.services.empty()) {
    return std::nullopt;
  }
  return std::move(state.services);
}

}  // namespace tarnix::companion
