#pragma once

#include "probe/bootstrap/interposed_calls.h"
#include "probe/platform/url_protocol.h"

namespace tarnix::qt6 {

/// Which protocol, if any, loads a request of the host in the place of the toolkit. Any thread.
class RequestRouter {
 public:
  virtual ~RequestRouter() = default;

  /// Whether there is any protocol at all. Cheap: asked for each request of the host.
  virtual bool hasProtocols() const noexcept = 0;

  /// Null when the toolkit itself is to load the request.
  virtual platform::UrlProtocolClass* protocolClassFor(const platform::UrlRequest& request) = 0;
};

/// What the network part is given. Everything lives as long as the process.
struct NetworkPartContext {
  RequestRouter* router = nullptr;
  InterposedCalls* interposedCalls = nullptr;
};

/// The one symbol that the network part exports. Called once; from then on every request of the
/// host comes past the router. Returns whether it found what it needs of the toolkit; if not, the
/// host goes on unseen.
using NetworkPartEntry = bool (*)(const NetworkPartContext* context);
inline constexpr const char* networkPartEntryName = "tarnixprobe_qt6_network";

}  // namespace tarnix::qt6
