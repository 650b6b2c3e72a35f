#include <variant>

#include "companion/command/audit_report.h"
#include "companion/command/host_answer.h"
#include "companion/command/output_file.h"
#include "companion/command/screen_commands.h"
#include "companion/command/standard_output.h"
#include "companion/output/display_text.h"
#include "probe/model/full_sync_payload.h"

namespace tarnix::companion {
namespace {

using Type = CompanionMessageType;

std::string applicationOf(const HostSession& host) {
  const std::optional<FullSyncPayload> sync = host.client.fullSync().decode<FullSyncPayload>();
  return sync && !sync->appName.empty() ? sync->appName : host.target.application;
}

}  // namespace

ExitCode runAudit(const CommandOptions& options, const AuditOptions& audit) {
  const Deadline deadline = deadlineIn(options.timeout());
  std::variant<HostSession, ExitCode> session = openSession(options, deadline);
  if (const ExitCode* code = std::get_if<ExitCode>(&session)) {
    return *code;
  }
  HostSession& host = std::get<HostSession>(session);
  const auto answer =
      ask<AccessibilityAuditResponse>(host, makeCommand(Type::commandAccessibilityAudit),
                                      Type::responseAccessibilityAudit, deadline, options);
  if (const ExitCode* code = std::get_if<ExitCode>(&answer)) {
    return *code;
  }
  const auto& [response, payload] = std::get<0>(answer);
  const std::string sarif =
      audit.sarifFile.empty() ? "" : sarifLog(response, applicationOf(host)) + "\n";
  const bool isSarifPrinted = audit.sarifFile == "-";
  if (!sarif.empty() && !isSarifPrinted) {
    const ExitCode code = writeToFile(audit.sarifFile, sarif, options);
    if (code != ExitCode::success) {
      return code;
    }
  }
  const ExitCode written = writeToStandardOutput(
      isSarifPrinted ? sarif
      : options.json ? printableJson(payload) + "\n"
                     : auditTable(response, Terminal::standardOutput(options.noColor)),
      options);
  if (written != ExitCode::success) {
    return written;
  }
  const bool isClean = audit.strict ? response.issues.empty() : errorCount(response) == 0;
  return isClean ? ExitCode::success : ExitCode::negative;
}

}  // namespace tarnix::companion
