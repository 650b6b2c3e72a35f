#pragma once

#include <cstdint>

namespace tarnix::linux_platform {

/// What a module for DNS service discovery is given. Everything stays valid until its entry
/// function returns; the functions may be called from its thread only.
struct AdvertiseRequest {
  /// UTF-8, at most 63 bytes.
  const char* name = nullptr;
  /// Such as "_http._tcp".
  const char* type = nullptr;
  /// In host byte order.
  std::uint16_t port = 0;
  /// Becomes readable when the announcement is to end; nobody reads it.
  int stopDescriptor = -1;
  /// Says why the service cannot be announced; called before the entry returns `unavailable`.
  void (*report)(const char* reason) = nullptr;
  /// See fork_guard.h.
  void (*closeInChild)(int descriptor) = nullptr;
  void (*forget)(int descriptor) = nullptr;
};

enum class AdvertiseOutcome : int {
  /// Told to end.
  stopped,
  /// The service is not announced this way, or no longer.
  unavailable,
};

/// The one entry of a module: announces the service on the loopback interface, and returns when it
/// is told to end or cannot go on.
using AdvertiseEntry = AdvertiseOutcome (*)(const AdvertiseRequest* request);
inline constexpr const char* advertiseEntryName = "tarnixprobe_advertise";

/// The interface that a service is announced on, and no other.
inline constexpr const char* loopbackInterface = "lo";

}  // namespace tarnix::linux_platform
