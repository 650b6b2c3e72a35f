#include "platforms/linux/preload/host_check.h"

#include <errno.h>
#include <link.h>
#include <string.h>
#include <sys/auxv.h>

namespace tarnix::linux_platform {

namespace {

struct LoadedLibraries {
  bool hasCore = false;
  bool hasGui = false;
  bool hasWebEngine = false;
};

int noteLibrary(dl_phdr_info* info, size_t, void* result) {
  LoadedLibraries& libraries = *static_cast<LoadedLibraries*>(result);
  const char* const slash = strrchr(info->dlpi_name, '/');
  const char* const name = slash == nullptr ? info->dlpi_name : slash + 1;
  libraries.hasCore |= strcmp(name, "libQt6Core.so.6") == 0;
  libraries.hasGui |= strcmp(name, "libQt6Gui.so.6") == 0;
  libraries.hasWebEngine |= strcmp(name, "libQt6WebEngineCore.so.6") == 0;
  return 0;
}

/// The web engine's renderers, network services and the like are processes of the same libraries,
/// each told its part by an argument. They mostly, but not always, go by one name.
bool isWebEngineHelper(const LoadedLibraries& libraries, int argumentCount,
                       const char* const* arguments) {
  if (strcmp(program_invocation_short_name, "QtWebEngineProcess") == 0) {
    return true;
  }
  if (!libraries.hasWebEngine) {
    return false;
  }
  static constexpr char processType[] = "--type=";
  for (int index = 1; index < argumentCount; ++index) {
    if (strncmp(arguments[index], processType, sizeof(processType) - 1) == 0) {
      return true;
    }
  }
  return false;
}

}  // namespace

bool isHost(int argumentCount, const char* const* arguments) {
  if (getauxval(AT_SECURE) != 0) {
    return false;
  }
  LoadedLibraries libraries;
  dl_iterate_phdr(noteLibrary, &libraries);
  return libraries.hasCore && libraries.hasGui &&
         !isWebEngineHelper(libraries, argumentCount, arguments);
}

}  // namespace tarnix::linux_platform
