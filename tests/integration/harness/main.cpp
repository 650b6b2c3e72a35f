#include <gtest/gtest.h>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/socket.h>

#include <cstdio>
#include <cstring>

#include "tests/companion/socket_descriptor.h"
#include "tests/integration/harness/own_world.h"

namespace {

bool isOwnWorld = false;

/// Brings up the loopback interface of a network namespace that is new.
bool raiseLoopback() {
  const tarnix::companion::SocketDescriptor any(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  ifreq request{};
  std::strcpy(request.ifr_name, "lo");
  request.ifr_flags = IFF_UP;
  return ioctl(any.get(), SIOCSIFFLAGS, &request) == 0;
}

bool leaveTheSharedWorld() {
  return unshare(CLONE_NEWNET | CLONE_NEWNS) == 0 &&
         mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 && raiseLoopback();
}

}  // namespace

bool tarnix::integration::hasOwnWorld() { return isOwnWorld; }

/// Integration tests have a network of their own, with nothing in it but the loopback interface,
/// where the system lets them: what else runs on the machine does not show up in them.
int main(int argumentCount, char** arguments) {
  testing::InitGoogleTest(&argumentCount, arguments);
  isOwnWorld = leaveTheSharedWorld();
  if (!isOwnWorld) {
    std::printf("note: no namespaces of its own; hosts of others may be seen\n");
  }
  return RUN_ALL_TESTS();
}
