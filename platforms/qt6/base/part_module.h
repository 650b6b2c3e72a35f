#pragma once

#include <string>

/// The modules beside this one that hold its parts, each for a library that not every host has.
namespace tarnix::qt6 {

/// Whether the host has a library of that name. Any thread.
bool isLibraryLoaded(const char* library);

/// Where a module of that file name lies.
std::string partPath(const char* fileName);

/// Brings a module into the process, for as long as that lives, and answers with what it exports as
/// `entryName`. Null when the module or the entry is not there.
void* loadPart(const char* fileName, const char* entryName);

}  // namespace tarnix::qt6
