#pragma once

#include <string_view>

namespace tarnix {

/// Writes one of the probe's own lines, with its line feed, where the host's standard error goes.
/// A capture that diverts standard error saves the original descriptor, and this is the place that
/// then writes to what was saved, so that the probe never reads its own lines; as long as nothing
/// is diverted it is standard error itself. Any thread.
void probelog(std::string_view line);

}  // namespace tarnix
