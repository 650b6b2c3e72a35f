#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "probe/model/crash_report.h"

namespace tarnix::companion {

struct FoundCrashReport {
  std::filesystem::path file;
  std::filesystem::file_time_type written;
  CrashReport report;
};

/// The reports in `folder`, newest first, of applications with `application` in their identifiers,
/// upper and lower case being the same. The folder may be anybody's to write to: what is not a
/// plain file, belongs to somebody else, is larger than any report or is none is passed over.
std::vector<FoundCrashReport> findCrashReports(const std::filesystem::path& folder,
                                               const std::string& application);

}  // namespace tarnix::companion
