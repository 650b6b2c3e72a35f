#include "probe/capture/probelog.h"

#include "probe/platform/diagnostics.h"

namespace tarnix {

void probelog(std::string_view line) { platform::writeDescriptor(probelogfd, line); }

}  // namespace tarnix
