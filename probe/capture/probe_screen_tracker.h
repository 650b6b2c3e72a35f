#pragma once

#include <string>

/// Which screen of the host is on view: each one that appears gives its name, to the state store
/// and to here. Screens that are only containers, the toolkit's own and the probe's own are passed
/// over. Main thread.
///
/// Clearing the state store does not touch the name that is kept here, so that responses name the
/// screen that is on view and not what the store remembers.
namespace tarnix::ProbeScreenTracker {

/// Starts tracking; further calls do nothing.
void install();

/// The readable name of the last screen that appeared; "Unknown" before the first.
const std::string& lastScreenName();

void setLastScreenName(std::string name);

namespace detail {
/// Only tests put it back.
inline constinit bool installed = false;
}  // namespace detail

}  // namespace tarnix::ProbeScreenTracker
