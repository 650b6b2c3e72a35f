#pragma once

#include <cstdint>
#include <optional>

namespace tarnix::platform {

/// Bytes of this process that lie in main memory; nothing when the system does not say. Any thread.
std::optional<std::uint64_t> residentMemory();

}  // namespace tarnix::platform
