#pragma once

#include <cstddef>

#include "probe/model/full_sync_payload.h"

namespace tarnix::bench {

/// A full sync as a busy application leaves it: `requests` exchanges with bodies of the given
/// sizes, and as many log lines. The same on every call.
FullSyncPayload sampleSync(std::size_t requests, std::size_t requestBodySize,
                           std::size_t responseBodySize);

}  // namespace tarnix::bench
