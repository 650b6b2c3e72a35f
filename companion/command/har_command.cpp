#include <fmt/format.h>

#include <cerrno>
#include <fstream>
#include <system_error>
#include <variant>

#include "companion/command/command_records.h"
#include "companion/command/commands.h"
#include "companion/command/har_log.h"
#include "companion/command/host_session.h"
#include "companion/command/standard_output.h"
#include "companion/output/counted.h"
#include "companion/output/display_text.h"
#include "probe/link/json_codec.h"
#include "probe/model/full_sync_payload.h"

namespace tarnix::companion {

ExitCode runHar(const CommandOptions& options, const std::string& file) {
  std::variant<HostSession, ExitCode> session = openSession(options, deadlineIn(options.timeout()));
  if (const ExitCode* code = std::get_if<ExitCode>(&session)) {
    return *code;
  }
  const auto sync = std::get<HostSession>(session).client.fullSync().decode<FullSyncPayload>();
  const std::optional<std::string> json =
      sync ? encodeJson(har::archiveOf(sync->httpRequests)) : std::nullopt;
  if (!json) {
    return report(ExitCode::notUnderstood,
                  "the full sync was not understood. Are `tarnix` and the probe of one version?",
                  options);
  }
  if (file == "-") {
    return writeToStandardOutput(*json + "\n", options);
  }
  errno = 0;
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  stream << *json << "\n";
  stream.close();
  if (!stream) {
    return report(ExitCode::failure,
                  fmt::format("{} cannot be written: {}. Choose another file.", file,
                              std::generic_category().message(errno)),
                  options);
  }
  if (options.json) {
    const ArchiveWritten written{file, sync->httpRequests.size()};
    return writeToStandardOutput(encodeJson(written).value_or("{}") + "\n", options);
  }
  const std::size_t count = sync->httpRequests.size();
  return writeToStandardOutput(fmt::format("{} {} in {}\n", counted(count, "exchange"),
                                           count == 1 ? "is" : "are", printable(file)),
                               options);
}

}  // namespace tarnix::companion
