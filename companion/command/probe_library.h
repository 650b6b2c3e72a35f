#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tarnix::companion {

/// What is preloaded into applications.
inline constexpr const char* probeLibraryName = "libtarnixprobe.so";

/// Where the library may be: beside a program of a build or an installation at `executable`, and
/// where this program was configured to be installed.
std::vector<std::filesystem::path> probeLibraryCandidates(const std::filesystem::path& executable);

/// The first candidate that is there.
std::optional<std::filesystem::path> findProbeLibrary();

/// `environment` ("NAME=value" each) with the library put before what is preloaded already.
std::vector<std::string> withPreloadedLibrary(std::vector<std::string> environment,
                                              const std::string& library);

}  // namespace tarnix::companion
