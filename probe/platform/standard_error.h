#pragma once

#include <chrono>
#include <optional>
#include <string_view>

/// The stream that the process writes its diagnostics to.
namespace tarnix::platform {

inline constexpr int standardErrorDescriptor = 2;

/// Told each piece of the stream, in order, after it has been passed on. Runs on the one thread
/// that reads the stream, and does not throw. The bytes are valid during the call.
using StandardErrorObserver = void (*)(std::string_view piece);

/// Leads descriptor 2 through a pipe. Whatever is written to it goes on to where it went before,
/// byte for byte and in order, and then to `observer`. Once for the process, on the main thread.
///
/// Returns a descriptor of the original destination, which stays open for the life of the process;
/// negative when there is none, and then nothing is passed on. Nothing when the stream could not be
/// diverted and is as it was.
std::optional<int> divertStandardError(StandardErrorObserver observer);

/// Waits until what has been written to a diverted stream so far has gone on; gives up when nothing
/// has for `patience`. Takes no lock and allocates nothing, so that it may be called by a thread
/// that is crashing; not by the observer. Nothing while the stream is not diverted.
void settleStandardError(std::chrono::milliseconds patience);

}  // namespace tarnix::platform
