#pragma once

#include <dlfcn.h>

namespace tarnix::qt6 {

/// A function that the toolkit's library for windows exports without declaring it in a header; null
/// when this version of it has none of that name. The library is in every process that asks.
template <class Function>
Function guiSymbol(const char* mangledName) {
  void* const library = dlopen("libQt6Gui.so.6", RTLD_LAZY | RTLD_NOLOAD);
  if (library == nullptr) {
    return nullptr;
  }
  void* const symbol = dlsym(library, mangledName);
  dlclose(library);
  return reinterpret_cast<Function>(symbol);
}

}  // namespace tarnix::qt6
