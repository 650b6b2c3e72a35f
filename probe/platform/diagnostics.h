#pragma once

#include <string_view>

/// Where the probe's own lines go. Any thread; failure is ignored.
namespace tarnix::platform {

/// One `write` of exactly `text` to descriptor 2, past the host's own buffers.
void writeStandardError(std::string_view text);

/// Adds `line`, given without line feed, to the system's log: journald where it runs, else syslog.
/// Never blocks.
void writeSystemLog(std::string_view line);

}  // namespace tarnix::platform
