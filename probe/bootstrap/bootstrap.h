#pragma once

namespace tarnix {

/// How the probe starts itself inside a host that knows nothing of it. The platform is set before
/// any of these is called.

/// Every way into the probe ends here; `reason` names the way, and the first one does the work.
/// Loading thread. The once-only guard is not synchronised: the ways in are taken one after the
/// other by the thread that loads the library.
void tarnixprobe_bootstrap(const char* reason) noexcept;

/// One run of `TarnixProbeBootstrap` between two lines that name the reason.
void tarnixprobe_run_swift_bootstrap(const char* reason) noexcept;

/// Has the server started on the main thread half a second from now, unless the host contains the
/// full companion SDK. May run more than once: a server that listens takes no notice of another
/// start. Loading thread or main thread.
void TarnixProbeBootstrap() noexcept;

namespace detail {
/// Whether some way in has been taken. Only tests put it back.
inline constinit bool tarnixprobe_loaded = false;
}  // namespace detail

}  // namespace tarnix
