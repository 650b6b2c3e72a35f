#pragma once

#include <functional>
#include <string>

#include "companion/client/companion_link.h"
#include "companion/client/deadline.h"
#include "companion/client/outcome.h"
#include "probe/link/companion_message.h"

namespace tarnix::companion {

/// Whether a command may be sent a second time when the connection was lost before its answer came:
/// a question may, a tap may not.
enum class Repetition { allowed, forbidden };

/// A companion's side of the link with one host: connects, takes the full sync, sends commands and
/// waits for their answers. Blocks its caller, each operation no longer than its deadline. One
/// thread at a time.
///
/// A probe serves one companion, and the newest wins. The loss of the old one may cost the new one
/// its connection too, before or just after the full sync, so that a companion which is dropped at
/// once connects again; this class does, a bounded number of times.
class CompanionClient {
 public:
  /// Gets what arrives unasked: events, and answers that nobody waits for any more.
  using Observer = std::function<void(const CompanionMessage&)>;

  /// How often one operation connects before it gives up.
  static constexpr int maximumTries = 10;

  /// Returns once the full sync is there.
  static Outcome<CompanionClient> connect(CompanionEndpoint endpoint, Deadline deadline);

  /// The message "sync.full" of the connection that is in use.
  const CompanionMessage& fullSync() const { return fullSync_; }

  void setObserver(Observer observer) { observer_ = std::move(observer); }

  Failure send(const CompanionMessage& message, Deadline deadline);

  /// The next message, whatever it is.
  Outcome<CompanionMessage> receive(Deadline deadline);

  /// Sends `command` and waits for a message of type `answer`; what else comes goes to the
  /// observer, heartbeats to nobody.
  Outcome<CompanionMessage> request(const CompanionMessage& command, CompanionMessageType answer,
                                    Deadline deadline, Repetition repetition = Repetition::allowed);

 private:
  CompanionClient(CompanionEndpoint endpoint, CompanionLink link, CompanionMessage fullSync);

  Outcome<CompanionMessage> exchange(const CompanionMessage& command, CompanionMessageType answer,
                                     Deadline deadline);

  CompanionEndpoint endpoint_;
  CompanionLink link_;
  CompanionMessage fullSync_;
  Observer observer_;
};

/// A command without a payload of its own.
CompanionMessage makeCommand(CompanionMessageType type);

}  // namespace tarnix::companion
