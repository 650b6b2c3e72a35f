#pragma once

#include <memory>

#include "probe/platform/url_session_configuration.h"

/// Puts the interceptor into every session configuration that the host gets from now on, so that
/// sessions with a list of protocols of their own come past it too.
namespace tarnix::session_configuration_hook {

/// Exchanges the platform's two configuration getters with wrappers, once a process, and says so;
/// a getter that the platform does not have is left out. Main thread: the guard is not
/// synchronised.
void installSwizzle();

/// The wrappers. Before the exchange they stand for themselves and would never return; after it,
/// calling one reaches the platform's own getter, which is how the wrapper that now stands in the
/// getter's place gets its configuration. Any thread.
std::shared_ptr<platform::UrlSessionConfiguration> probe_defaultConfig();
std::shared_ptr<platform::UrlSessionConfiguration> probe_ephemeralConfig();

/// Puts the interceptor in front of everything else, unless it stands anywhere in the list already.
void injectProbeInterceptor(platform::UrlSessionConfiguration& configuration);

/// What the probe's own sessions are made from: the default configuration without the interceptor.
/// Made once; null when the platform has no default. Any thread.
std::shared_ptr<platform::UrlSessionConfiguration> internalConfig();

/// Forgets that anything was installed or made. For tests, which replace the platform.
void forgetInstallation();

}  // namespace tarnix::session_configuration_hook
