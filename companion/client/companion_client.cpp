#include "companion/client/companion_client.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

namespace tarnix::companion {
namespace {

using Kind = ClientError::Kind;
using namespace std::chrono_literals;

// Between two tries, doubled each time: a replaced connection ends within one turn of the host's
// main loop, a companion that is being replaced again and again needs longer.
constexpr std::chrono::milliseconds firstPause = 20ms;
constexpr std::chrono::milliseconds longestPause = 500ms;

/// False when no time is left for another try.
bool pauseBeforeTry(int tries, Deadline deadline) {
  const auto pause = std::min(firstPause * (1 << std::min(tries, 8)), longestPause);
  if (timeUntil(deadline) <= pause) {
    return false;
  }
  std::this_thread::sleep_for(pause);
  return true;
}

ClientError notAProbe(const CompanionEndpoint& endpoint) {
  return {Kind::notUnderstood,
          fmt::format("what listens on port {} does not talk like a probe of this version. See "
                      "which port is meant with `tarnix list`.",
                      endpoint.port)};
}

ClientError droppedAgainAndAgain(const CompanionEndpoint& endpoint, int tries) {
  return {Kind::dropped,
          fmt::format("the application on port {} closed the connection {} times. It is ending, "
                      "belongs to another user, or another companion keeps connecting; close that "
                      "one, or look with `tarnix list`, and try again.",
                      endpoint.port, tries)};
}

ClientError noSync(const CompanionEndpoint& endpoint, bool insideBody) {
  if (insideBody) {
    return {Kind::noAnswer,
            fmt::format("the full sync from port {} began and was not whole in time. Allow more "
                        "with --timeout; if it never ends, that port is not a probe's, see "
                        "`tarnix list`.",
                        endpoint.port)};
  }
  return {Kind::noAnswer,
          fmt::format("connected to port {}, and no full sync came in time: the application's main "
                      "thread seems busy, or the port is not a probe's. Try again later, allow "
                      "more with --timeout, or look with `tarnix list`.",
                      endpoint.port)};
}

struct Connected {
  CompanionLink link;
  CompanionMessage fullSync;
};

/// One try: a connection and its first message.
Outcome<Connected> connectOnce(const CompanionEndpoint& endpoint, Deadline deadline) {
  Outcome<CompanionLink> link = CompanionLink::open(endpoint, deadline);
  if (!link) {
    return link.error();
  }
  Outcome<std::string> body = link->readBody(deadline);
  if (!body) {
    return body.error().kind == Kind::noAnswer ? noSync(endpoint, link->isInsideBody())
                                               : body.error();
  }
  std::optional<CompanionMessage> message = CompanionMessage::decodeEnvelope(*body);
  if (!message || message->type != CompanionMessageType::syncFull) {
    return notAProbe(endpoint);
  }
  return Connected{std::move(*link), *std::move(message)};
}

Outcome<Connected> connectAgainUntil(const CompanionEndpoint& endpoint, Deadline deadline) {
  for (int tries = 1;; ++tries) {
    Outcome<Connected> connected = connectOnce(endpoint, deadline);
    if (connected || connected.error().kind != Kind::dropped) {
      return connected;
    }
    if (tries == CompanionClient::maximumTries || !pauseBeforeTry(tries - 1, deadline)) {
      return droppedAgainAndAgain(endpoint, tries);
    }
  }
}

}  // namespace

CompanionClient::CompanionClient(CompanionEndpoint endpoint, CompanionLink link,
                                 CompanionMessage fullSync)
    : endpoint_(std::move(endpoint)), link_(std::move(link)), fullSync_(std::move(fullSync)) {}

Outcome<CompanionClient> CompanionClient::connect(CompanionEndpoint endpoint, Deadline deadline) {
  Outcome<Connected> connected = connectAgainUntil(endpoint, deadline);
  if (!connected) {
    return connected.error();
  }
  return CompanionClient(std::move(endpoint), std::move(connected->link),
                         std::move(connected->fullSync));
}

Failure CompanionClient::send(const CompanionMessage& message, Deadline deadline) {
  const std::optional<std::string> envelope = message.encodeEnvelope();
  if (!envelope) {
    return ClientError{Kind::notUnderstood, "the command's time is not a number."};
  }
  return link_.writeBody(*envelope, deadline);
}

Outcome<CompanionMessage> CompanionClient::receive(Deadline deadline) {
  Outcome<std::string> body = link_.readBody(deadline);
  if (!body) {
    return body.error();
  }
  std::optional<CompanionMessage> message = CompanionMessage::decodeEnvelope(*body);
  if (!message) {
    return notAProbe(endpoint_);
  }
  return *std::move(message);
}

Outcome<CompanionMessage> CompanionClient::exchange(const CompanionMessage& command,
                                                    CompanionMessageType answer,
                                                    Deadline deadline) {
  if (Failure failure = send(command, deadline)) {
    return *failure;
  }
  bool isAlive = false;
  while (true) {
    Outcome<CompanionMessage> message = receive(deadline);
    if (!message && message.error().kind == Kind::noAnswer) {
      const bool isArriving = link_.isInsideBody();
      return ClientError{
          Kind::noAnswer,
          fmt::format("no {} came from port {} in time: {} Try again later, or allow more with "
                      "--timeout.",
                      rawValue(answer), endpoint_.port,
                      isArriving ? "it is large, and still arriving."
                      : isAlive  ? "the application is alive, and has nothing to say to this."
                                 : "the application's main thread seems busy.")};
    }
    if (!message || message->type == answer) {
      return message;
    }
    isAlive = true;
    if (message->type != CompanionMessageType::heartbeat && observer_) {
      observer_(*message);
    }
  }
}

Outcome<CompanionMessage> CompanionClient::request(const CompanionMessage& command,
                                                   CompanionMessageType answer, Deadline deadline,
                                                   Repetition repetition) {
  for (int tries = 1;; ++tries) {
    Outcome<CompanionMessage> message = exchange(command, answer, deadline);
    if (message || message.error().kind != Kind::dropped) {
      return message;
    }
    if (repetition == Repetition::forbidden) {
      return ClientError{
          Kind::dropped,
          fmt::format("the application on port {} closed the connection before it answered; {} "
                      "may or may not have been carried out. Look before you repeat it.",
                      endpoint_.port, rawValue(command.type))};
    }
    if (tries == maximumTries || !pauseBeforeTry(tries - 1, deadline)) {
      return droppedAgainAndAgain(endpoint_, tries);
    }
    Outcome<Connected> connected = connectAgainUntil(endpoint_, deadline);
    if (!connected) {
      return connected.error();
    }
    link_ = std::move(connected->link);
    fullSync_ = std::move(connected->fullSync);
  }
}

CompanionMessage makeCommand(CompanionMessageType type) {
  return {type, "{}", Timestamp::from(std::chrono::system_clock::now())};
}

}  // namespace tarnix::companion
