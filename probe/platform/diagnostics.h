#pragma once

#include <string_view>

/// Where the probe's own lines go. Any thread; failure is ignored.
namespace tarnix::platform {

/// One `write` of exactly `text`, past the host's own buffers. It raises no signal. A destination
/// that takes nothing for a while does not get the text, so that the host does not wait for it; a
/// negative descriptor is one that never takes any.
void writeDescriptor(int descriptor, std::string_view text);

/// The same to descriptor 2.
void writeStandardError(std::string_view text);

/// Adds `line`, given without line feed, to the system's log: journald where it runs, else syslog.
/// Never blocks.
void writeSystemLog(std::string_view line);

}  // namespace tarnix::platform
