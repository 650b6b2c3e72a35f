#include <gtest/gtest.h>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

#include <cstdio>
#include <cstring>

#include "tests/companion/socket_descriptor.h"

namespace {

/// Brings up the loopback interface of a network namespace that is new.
bool raiseLoopback() {
  const tarnix::companion::SocketDescriptor any(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  ifreq request{};
  std::strcpy(request.ifr_name, "lo");
  request.ifr_flags = IFF_UP;
  return ioctl(any.get(), SIOCSIFFLAGS, &request) == 0;
}

}  // namespace

/// Integration tests have a network of their own, with nothing in it but the loopback interface,
/// where the system lets them: what else runs on the machine does not show up in them.
int main(int argumentCount, char** arguments) {
  testing::InitGoogleTest(&argumentCount, arguments);
  if (unshare(CLONE_NEWNET) != 0) {
    std::printf("note: no network namespace of its own; hosts of others may be seen\n");
  } else if (!raiseLoopback()) {
    std::perror("the loopback interface cannot be brought up");
    return 1;
  }
  return RUN_ALL_TESTS();
}
