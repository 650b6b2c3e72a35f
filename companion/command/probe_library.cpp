#include "companion/command/probe_library.h"

#include <string_view>
#include <system_error>

#ifndef TARNIX_INSTALLED_LIBRARY_DIRECTORY
#error "The build says where the library is installed."
#endif

namespace tarnix::companion {

using std::filesystem::path;

std::vector<path> probeLibraryCandidates(const path& executable) {
  const path prefix = executable.parent_path().parent_path();
  return {prefix / "lib" / probeLibraryName, prefix / "lib/tarnix" / probeLibraryName,
          path(TARNIX_INSTALLED_LIBRARY_DIRECTORY) / probeLibraryName};
}

std::optional<path> findProbeLibrary() {
  std::error_code error;
  const path executable = std::filesystem::read_symlink("/proc/self/exe", error);
  for (const path& candidate : probeLibraryCandidates(executable)) {
    if (std::filesystem::is_regular_file(candidate, error)) {
      return candidate;
    }
  }
  return std::nullopt;
}

std::vector<std::string> withPreloadedLibrary(std::vector<std::string> environment,
                                              const std::string& library) {
  constexpr std::string_view variable = "LD_PRELOAD=";
  for (std::string& entry : environment) {
    if (entry.starts_with(variable)) {
      const std::string earlier = entry.substr(variable.size());
      entry = std::string(variable) + library + (earlier.empty() ? "" : ":" + earlier);
      return environment;
    }
  }
  environment.push_back(std::string(variable) + library);
  return environment;
}

}  // namespace tarnix::companion
