#pragma once

#include "probe/bootstrap/interposed_calls.h"

/// Where the preloaded library and the core module meet. Included by code that links no C++
/// library.
namespace tarnix::linux_platform {

/// The ways into the core. Static: both functions may be called at any time from then on.
struct CoreEntryPoints {
  void (*bootstrap)(const char* reason);
  void (*startProbe)();
};

/// The one symbol that the core module exports. Loads the toolkit's module and makes the core
/// ready; called once, on the loading thread, before `main`. `calls` lives as long as the process.
/// Null when the probe cannot run here; one line on standard error says why.
using CoreEntry = const CoreEntryPoints* (*)(InterposedCalls* calls);
inline constexpr const char* coreEntryName = "tarnixprobe_core";

}  // namespace tarnix::linux_platform
