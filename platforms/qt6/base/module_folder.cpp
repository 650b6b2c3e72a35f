#include "platforms/qt6/base/module_folder.h"

#include <dlfcn.h>

namespace tarnix::qt6 {

std::string moduleFolder() {
  static const char anchor = 0;
  Dl_info image{};
  if (dladdr(&anchor, &image) == 0 || image.dli_fname == nullptr) {
    return {};
  }
  const std::string path = image.dli_fname;
  return path.substr(0, path.rfind('/') + 1);
}

}  // namespace tarnix::qt6
