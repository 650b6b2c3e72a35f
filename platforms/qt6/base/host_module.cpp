#include "probe/bootstrap/host_module.h"

#include <QtGlobal>

#include "platforms/qt6/base/host_services.h"

extern "C" [[gnu::visibility("default")]] const tarnix::HostServices* tarnixprobe_host_module(
    const tarnix::HostModuleContext* context) {
  try {
    return &tarnix::qt6::installHostServices(context);
  } catch (...) {
    // Memory ran out. The host goes on without the probe.
    return nullptr;
  }
}
