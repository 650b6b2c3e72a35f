#pragma once

#include <string>

namespace tarnix::companion {

/// Why a companion did not get what it asked for.
struct ClientError {
  enum class Kind {
    /// The address cannot be used, or nothing listens there.
    unreachable,
    /// The host ended the connection, also after it was tried again.
    dropped,
    /// Time was over.
    noAnswer,
    /// What arrived is not what a probe says.
    notUnderstood,
  };

  Kind kind = Kind::unreachable;
  /// For people: what happened, and what to do next.
  std::string message;
};

}  // namespace tarnix::companion
