#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "companion/command/host_session.h"
#include "probe/link/companion_message.h"

namespace tarnix::companion {

/// What a host said to one question.
template <Record R>
struct HostAnswer {
  R record;
  /// The same as it came, in JSON.
  std::string payload;
};

/// Asks a host that is connected. When no answer comes, says so on standard error and answers with
/// how the program is to end.
template <Record R>
std::variant<HostAnswer<R>, ExitCode> ask(HostSession& host, const CompanionMessage& command,
                                          CompanionMessageType answerType, Deadline deadline,
                                          const CommandOptions& options) {
  Outcome<CompanionMessage> answer = host.client.request(command, answerType, deadline);
  if (!answer) {
    return report(answer.error(), options);
  }
  std::optional<R> record = answer->decode<R>();
  if (!record) {
    return report(ExitCode::notUnderstood,
                  "the answer was not understood. Are `tarnix` and the probe of one version?",
                  options);
  }
  return HostAnswer<R>{*std::move(record), std::move(answer->payload)};
}

/// The same of the host that the options choose.
template <Record R>
std::variant<HostAnswer<R>, ExitCode> ask(const CompanionMessage& command,
                                          CompanionMessageType answerType,
                                          const CommandOptions& options) {
  const Deadline deadline = deadlineIn(options.timeout());
  std::variant<HostSession, ExitCode> session = openSession(options, deadline);
  if (const ExitCode* code = std::get_if<ExitCode>(&session)) {
    return *code;
  }
  return ask<R>(std::get<HostSession>(session), command, answerType, deadline, options);
}

}  // namespace tarnix::companion
