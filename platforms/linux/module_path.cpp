#include "platforms/linux/module_path.h"

#include <dlfcn.h>

#include <cstddef>

namespace tarnix::linux_platform {

std::string modulePath(std::string_view name) {
  Dl_info image{};
  std::string path;
  static const char anchor = 0;
  if (dladdr(&anchor, &image) != 0 && image.dli_fname != nullptr) {
    path = image.dli_fname;
  }
  const std::size_t slash = path.rfind('/');
  path.resize(slash == std::string::npos ? 0 : slash + 1);
  path += name;
  return path;
}

}  // namespace tarnix::linux_platform
