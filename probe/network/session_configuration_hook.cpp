#include "probe/network/session_configuration_hook.h"

#include <algorithm>
#include <mutex>
#include <optional>
#include <utility>

#include "probe/network/probe_network_interceptor.h"
#include "probe/platform/diagnostics.h"
#include "probe/platform/platform.h"

namespace tarnix::session_configuration_hook {
namespace {

using Configuration = std::shared_ptr<platform::UrlSessionConfiguration>;
using Getter = platform::UrlLoading::ConfigurationGetter;
using ProtocolClasses = platform::UrlSessionConfiguration::ProtocolClasses;

/// The body of both wrappers: `own` is the wrapper itself, which holds the platform's getter once
/// they are exchanged.
Configuration injectedFrom(const Getter& own) {
  Configuration configuration = own();
  if (configuration) {
    injectProbeInterceptor(*configuration);
  }
  return configuration;
}

Getter& defaultWrapper() {
  static Getter& wrapper = *new Getter([] { return injectedFrom(defaultWrapper()); });
  return wrapper;
}

Getter& ephemeralWrapper() {
  static Getter& wrapper = *new Getter([] { return injectedFrom(ephemeralWrapper()); });
  return wrapper;
}

void exchange(Getter* platformGetter, Getter& wrapper) {
  if (platformGetter != nullptr) {
    Getter::exchangeImplementations(*platformGetter, wrapper);
  }
}

// Main thread.
constinit bool isInstalled = false;

struct InternalConfig {
  std::mutex lock;
  std::optional<Configuration> made;
};

InternalConfig& internalConfigHolder() {
  static InternalConfig& holder = *new InternalConfig;
  return holder;
}

Configuration makeInternalConfig() {
  Getter* const getter = platform::current().urlLoading->defaultSessionConfiguration();
  Configuration configuration = getter == nullptr ? nullptr : (*getter)();
  if (configuration) {
    std::optional<ProtocolClasses> classes = configuration->protocolClasses();
    if (classes) {
      std::erase(*classes, &ProbeNetworkInterceptor::protocolClass());
    }
    configuration->setProtocolClasses(std::move(classes));
  }
  return configuration;
}

}  // namespace

void installSwizzle() {
  if (isInstalled) {
    return;
  }
  isInstalled = true;
  if (platform::UrlLoading* const urlLoading = platform::current().urlLoading) {
    exchange(urlLoading->defaultSessionConfiguration(), defaultWrapper());
    exchange(urlLoading->ephemeralSessionConfiguration(), ephemeralWrapper());
  }
  platform::writeStandardError("[TarnixProbe] URLSessionConfiguration swizzle installed\n");
}

Configuration probe_defaultConfig() { return defaultWrapper()(); }

Configuration probe_ephemeralConfig() { return ephemeralWrapper()(); }

void injectProbeInterceptor(platform::UrlSessionConfiguration& configuration) {
  ProtocolClasses classes = configuration.protocolClasses().value_or(ProtocolClasses());
  platform::UrlProtocolClass* const interceptor = &ProbeNetworkInterceptor::protocolClass();
  if (std::find(classes.begin(), classes.end(), interceptor) == classes.end()) {
    classes.insert(classes.begin(), interceptor);
  }
  configuration.setProtocolClasses(std::move(classes));
}

Configuration internalConfig() {
  InternalConfig& holder = internalConfigHolder();
  const std::lock_guard guard(holder.lock);
  if (!holder.made) {
    holder.made = makeInternalConfig();
  }
  return *holder.made;
}

void forgetInstallation() {
  isInstalled = false;
  defaultWrapper().setImplementation([] { return injectedFrom(defaultWrapper()); });
  ephemeralWrapper().setImplementation([] { return injectedFrom(ephemeralWrapper()); });
  InternalConfig& holder = internalConfigHolder();
  const std::lock_guard guard(holder.lock);
  holder.made.reset();
}

}  // namespace tarnix::session_configuration_hook
