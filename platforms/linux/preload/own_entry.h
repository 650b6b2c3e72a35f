#pragma once

/// The list of preloaded libraries in the environment.
namespace tarnix::linux_platform {

/// Takes every entry that names the library at `ownPath` out of `list`, in place; the others, their
/// order and what separates them stay. Entries are separated by colons and blanks. Returns whether
/// anything is left.
bool removeOwnEntry(char* list, const char* ownPath);

}  // namespace tarnix::linux_platform
