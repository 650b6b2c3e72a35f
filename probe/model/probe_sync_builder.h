#pragma once

#include "probe/model/full_sync_payload.h"

/// Main thread.
namespace tarnix::ProbeSyncBuilder {

/// Everything that the probe holds at this moment, after a fresh look at the host's settings. The
/// rules that the probe applies are not part of it.
OutgoingFullSync buildFullSync();

}  // namespace tarnix::ProbeSyncBuilder
