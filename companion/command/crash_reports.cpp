#include "companion/command/crash_reports.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <system_error>

#include "companion/client/letter_case.h"
#include "probe/link/json_codec.h"

namespace tarnix::companion {
namespace {

constexpr std::string_view prefix = "tarnix_crash_";
constexpr std::string_view suffix = ".json";
constexpr std::size_t largestReport = 4 * 1'048'576;

class OpenFile {
 public:
  explicit OpenFile(const std::filesystem::path& path)
      : descriptor_(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)) {}
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  ~OpenFile() {
    if (descriptor_ >= 0) {
      ::close(descriptor_);
    }
  }

  bool isOwnPlainFile() const {
    struct stat status {};
    return ::fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode) &&
           (status.st_uid == ::geteuid() || ::geteuid() == 0);
  }

  std::optional<std::string> read() const {
    std::string text(largestReport + 1, '\0');
    std::size_t length = 0;
    ssize_t count = 0;
    while (length < text.size() &&
           (count = ::read(descriptor_, text.data() + length, text.size() - length)) > 0) {
      length += static_cast<std::size_t>(count);
    }
    text.resize(length);
    return count < 0 || length > largestReport ? std::nullopt : std::optional(std::move(text));
  }

 private:
  const int descriptor_;
};

std::optional<CrashReport> readReport(const std::filesystem::path& path) {
  const OpenFile file(path);
  if (!file.isOwnPlainFile()) {
    return std::nullopt;
  }
  const std::optional<std::string> text = file.read();
  return text ? decodeJson<CrashReport>(*text) : std::nullopt;
}

bool hasReportName(const std::filesystem::path& path) {
  const std::string name = path.filename().string();
  return name.starts_with(prefix) && name.ends_with(suffix);
}

}  // namespace

std::vector<FoundCrashReport> findCrashReports(const std::filesystem::path& folder,
                                               const std::string& application) {
  std::vector<FoundCrashReport> found;
  std::error_code error;
  for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    if (!hasReportName(entry->path())) {
      continue;
    }
    std::error_code gone;
    const std::filesystem::file_time_type written = entry->last_write_time(gone);
    std::optional<CrashReport> report = readReport(entry->path());
    if (!gone && report && containsInAnyCase(report->bundleId, application)) {
      found.push_back({entry->path(), written, *std::move(report)});
    }
  }
  std::sort(found.begin(), found.end(), [](const auto& one, const auto& other) {
    return one.written != other.written ? one.written > other.written : one.file < other.file;
  });
  return found;
}

}  // namespace tarnix::companion
