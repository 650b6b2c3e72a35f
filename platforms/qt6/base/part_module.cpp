#include "platforms/qt6/base/part_module.h"

#include <dlfcn.h>

namespace tarnix::qt6 {

namespace {

/// The folder that this module and its parts lie in, with a slash at its end.
std::string moduleFolder() {
  static const char anchor = 0;
  Dl_info image{};
  if (dladdr(&anchor, &image) == 0 || image.dli_fname == nullptr) {
    return {};
  }
  const std::string path = image.dli_fname;
  return path.substr(0, path.rfind('/') + 1);
}

}  // namespace

bool isLibraryLoaded(const char* library) {
  void* const handle = dlopen(library, RTLD_LAZY | RTLD_NOLOAD);
  if (handle == nullptr) {
    return false;
  }
  dlclose(handle);
  return true;
}

std::string partPath(const char* fileName) { return moduleFolder() + fileName; }

void* loadPart(const char* fileName, const char* entryName) {
  void* const module = dlopen(partPath(fileName).c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  return module == nullptr ? nullptr : dlsym(module, entryName);
}

}  // namespace tarnix::qt6
