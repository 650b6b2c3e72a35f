#include <sys/random.h>

#include <cstdlib>
#include <exception>

#include "platforms/linux/dnssd/advertise.h"
#include "platforms/linux/dnssd/responder.h"

using tarnix::linux_platform::AdvertiseOutcome;
using tarnix::linux_platform::AdvertiseRequest;
using tarnix::linux_platform::Responder;

extern "C" {

[[gnu::visibility("default")]] AdvertiseOutcome tarnixprobe_advertise(
    const AdvertiseRequest* request) {
  try {
    return Responder(*request).run();
  } catch (const std::exception& error) {
    request->report(error.what());
    return AdvertiseOutcome::unavailable;
  }
}

/// Takes the place of the C library's for the mDNS library that this module brings: a host that
/// counts on its own sequence of random numbers keeps it.
[[gnu::visibility("default")]] int rand() noexcept {
  unsigned number = 0;
  // A few bytes are always given whole, without waiting, once the machine has started.
  static_cast<void>(getrandom(&number, sizeof(number), GRND_NONBLOCK));
  return static_cast<int>(number & RAND_MAX);
}
}
