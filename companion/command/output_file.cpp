#include "companion/command/output_file.h"

#include <fmt/format.h>

#include <cerrno>
#include <fstream>
#include <system_error>

#include "companion/command/host_session.h"

namespace tarnix::companion {

ExitCode writeToFile(const std::string& file, std::string_view bytes,
                     const CommandOptions& options) {
  errno = 0;
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  stream.close();
  if (stream) {
    return ExitCode::success;
  }
  return report(
      ExitCode::failure,
      fmt::format("{} cannot be written: {}.", file, std::generic_category().message(errno)),
      options);
}

}  // namespace tarnix::companion
