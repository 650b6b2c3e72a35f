#include <fmt/format.h>

#include <algorithm>
#include <chrono>

#include "companion/command/command_records.h"
#include "companion/command/commands.h"
#include "companion/command/host_session.h"
#include "companion/command/standard_output.h"
#include "companion/output/display_text.h"
#include "probe/link/json_codec.h"

namespace tarnix::companion {

ExitCode runList(const CommandOptions& options) {
  const std::vector<HostTarget> targets =
      discoverTargets(deadlineIn(std::min(announcementTime, options.timeout())));
  if (options.json) {
    HostList list;
    for (const HostTarget& target : targets) {
      list.hosts.push_back({target.application, target.serviceName, target.pid, target.port});
    }
    const std::optional<std::string> json = encodeJson(list);
    if (!json) {
      return report(ExitCode::failure, "a name among the applications is not text.", options);
    }
    return writeToStandardOutput(printableJson(*json) + "\n", options);
  }
  if (targets.empty()) {
    return report(ExitCode::noHost,
                  "no application with a probe was found. Start one with `tarnix run APP`.",
                  options);
  }
  return writeToStandardOutput(describeTargets(targets, Terminal::standardOutput(options.noColor)),
                               options);
}

}  // namespace tarnix::companion
