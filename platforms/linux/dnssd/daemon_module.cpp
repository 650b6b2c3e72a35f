#include <exception>

#include "platforms/linux/dnssd/advertise.h"
#include "platforms/linux/dnssd/daemon_registration.h"

using tarnix::linux_platform::AdvertiseOutcome;
using tarnix::linux_platform::AdvertiseRequest;
using tarnix::linux_platform::DaemonRegistration;

extern "C" [[gnu::visibility("default")]] AdvertiseOutcome tarnixprobe_advertise(
    const AdvertiseRequest* request) {
  try {
    return DaemonRegistration(*request).run();
  } catch (const std::exception& error) {
    request->report(error.what());
    return AdvertiseOutcome::unavailable;
  }
}
