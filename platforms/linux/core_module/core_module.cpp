#include <dlfcn.h>

#include <string>

#include "platforms/linux/core_module/core_entry.h"
#include "platforms/linux/local_device.h"
#include "platforms/linux/loopback_network.h"
#include "platforms/linux/module_path.h"
#include "platforms/linux/system_clock.h"
#include "probe/bootstrap/bootstrap.h"
#include "probe/bootstrap/host_module.h"
#include "probe/platform/diagnostics.h"
#include "probe/platform/platform.h"

namespace tarnix::linux_platform {

namespace {

constexpr const char* toolkitModule = "libtarnixprobe-qt6.so";

void report(const std::string& reason) {
  platform::writeStandardError("[TarnixProbe] Cannot load " + std::string(toolkitModule) + ": " +
                               reason + "\n");
}

const HostServices* loadToolkit(InterposedCalls* calls) {
  const std::string path = modulePath(toolkitModule);
  void* const module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  void* const entry = module == nullptr ? nullptr : dlsym(module, hostModuleEntryName);
  if (entry == nullptr) {
    const char* const error = dlerror();
    report(error != nullptr ? error : "it has no entry");
    return nullptr;
  }
  const HostModuleContext context{tarnixprobe_bootstrap, calls};
  const HostServices* const services = reinterpret_cast<HostModuleEntry>(entry)(&context);
  if (services == nullptr) {
    report("it does not work with this host");
  }
  return services;
}

const CoreEntryPoints* loadCore(InterposedCalls* calls) {
  const HostServices* const services = loadToolkit(calls);
  if (services == nullptr) {
    return nullptr;
  }
  platform::Platform platform;
  platform.application = services->application;
  platform.bundle = services->bundle;
  platform.classRegistry = services->classRegistry;
  platform.clock = &SystemClock::shared();
  platform.device = &LocalDevice::shared();
  platform.display = services->display;
  platform.mainQueue = services->mainQueue;
  platform.network = &LoopbackNetwork::shared();
  platform.notificationCenter = services->notificationCenter;
  platform.overlaySurfaces = services->overlaySurfaces;
  platform.urlLoading = services->urlLoading;
  platform.urlOpener = services->urlOpener;
  platform.userDefaults = services->userDefaults;
  platform.viewDidAppear = services->viewDidAppear;
  platform.webViewClass = services->webViewClass;
  platform::setCurrent(platform);
  static constexpr CoreEntryPoints entryPoints{tarnixprobe_bootstrap, TarnixProbeBootstrap};
  return &entryPoints;
}

}  // namespace

}  // namespace tarnix::linux_platform

extern "C" [[gnu::visibility("default")]] const tarnix::linux_platform::CoreEntryPoints*
tarnixprobe_core(tarnix::InterposedCalls* calls) {
  try {
    return tarnix::linux_platform::loadCore(calls);
  } catch (...) {
    // Memory ran out. The host goes on without the probe.
    return nullptr;
  }
}
