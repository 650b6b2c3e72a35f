#include "platforms/linux/peer_user.h"

#include <unistd.h>

#include <optional>

#include "platforms/linux/socket_diagnosis.h"
#include "platforms/linux/socket_table.h"
#include "platforms/linux/tcp_endpoints.h"

namespace tarnix::linux_platform {

bool isPeerTrusted(int descriptor) {
  const std::optional<TcpEndpoints> endpoints = peerEndpoints(descriptor);
  if (!endpoints) {
    return false;
  }
  std::optional<SocketOwner> owner = askSocketDiagnosis(*endpoints);
  if (!owner) {
    // Sandboxes and small kernels come without that interface.
    owner = searchSocketTable(*endpoints);
  }
  return owner && owner->inode != 0 && (owner->user == geteuid() || owner->user == 0);
}

}  // namespace tarnix::linux_platform
