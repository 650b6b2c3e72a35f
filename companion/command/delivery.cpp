#include "companion/command/delivery.h"

#include <chrono>
#include <variant>

#include "companion/command/host_session.h"

namespace tarnix::companion {
namespace {

using namespace std::chrono_literals;

/// The end of a replaced companion reaches the probe within a turn of the host's main loop.
constexpr auto quietTime = 250ms;

/// Whether the connection outlives the quiet time, whatever else arrives in it.
Failure watchQuietTime(CompanionClient& client) {
  const Deadline quietUntil = deadlineIn(quietTime);
  while (true) {
    const Outcome<CompanionMessage> message = client.receive(quietUntil);
    if (!message) {
      return message.error().kind == ClientError::Kind::noAnswer ? Failure() : message.error();
    }
  }
}

}  // namespace

ExitCode deliver(const CommandOptions& options, const CompanionMessage& command,
                 Repetition repetition) {
  const Deadline deadline = deadlineIn(options.timeout());
  for (int tries = 1;; ++tries) {
    std::variant<HostSession, ExitCode> session = openSession(options, deadline);
    if (const ExitCode* code = std::get_if<ExitCode>(&session)) {
      return *code;
    }
    CompanionClient& client = std::get<HostSession>(session).client;
    Failure failure = client.send(command, deadline);
    if (!failure) {
      failure = watchQuietTime(client);
    }
    if (!failure) {
      return ExitCode::success;
    }
    if (failure->kind == ClientError::Kind::dropped && repetition == Repetition::forbidden) {
      return report(ExitCode::connectionFailed,
                    "the application closed the connection; the command may or may not have been "
                    "carried out. Look before you repeat it.",
                    options);
    }
    if (failure->kind != ClientError::Kind::dropped || tries == CompanionClient::maximumTries ||
        isOver(deadline)) {
      return report(*failure, options);
    }
  }
}

}  // namespace tarnix::companion
