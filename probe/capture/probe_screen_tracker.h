#pragma once

#include <string>

/// Which screen of the host is on view. Main thread.
///
/// So far this only holds the name: nothing sets it yet outside the tests, and every screen is
/// "Unknown". Clearing the state store does not touch it, so that responses name the screen that is
/// on view and not what the store remembers.
namespace tarnix::ProbeScreenTracker {

/// The readable name of the last screen that appeared; "Unknown" before the first.
const std::string& lastScreenName();

void setLastScreenName(std::string name);

}  // namespace tarnix::ProbeScreenTracker
