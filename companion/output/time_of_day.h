#pragma once

#include <string>

#include "probe/link/timestamp.h"

namespace tarnix::companion {

/// Local time of day, to the millisecond: "14:03:59.042".
std::string timeOfDay(Timestamp timestamp);

}  // namespace tarnix::companion
