#pragma once

#include "probe/platform/web_view.h"

/// User scripts of the application's profiles, put in beside the collection in which the
/// application keeps its own: it finds none of ours there. Main thread.
namespace tarnix::qt6::profile_scripts {

/// Whether the toolkit has what is needed.
bool isPossible();

/// `profile` is the engine's own object; null does no harm. A script that the profile has already
/// is left as it is.
void add(void* profile, const platform::UserScript& script);

/// The application may have cleared its collection, which takes away ours too.
void addAgain(void* profile) noexcept;

}  // namespace tarnix::qt6::profile_scripts
