#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "companion/client/deadline.h"
#include "companion/client/outcome.h"

namespace tarnix::companion {

/// Where a probe listens.
struct CompanionEndpoint {
  /// A name or an address; probes listen on the loopback addresses only.
  std::string host = "127.0.0.1";
  std::uint16_t port = 0;
};

/// One TCP stream to a probe, cut into message bodies. Blocks its caller, each operation no longer
/// than its deadline. One thread at a time.
class CompanionLink {
 public:
  static Outcome<CompanionLink> open(const CompanionEndpoint& endpoint, Deadline deadline);

  CompanionLink(CompanionLink&&) noexcept;
  CompanionLink& operator=(CompanionLink&&) noexcept;
  ~CompanionLink();

  /// Writes one frame. A link whose write failed, also for want of time, is of no further use.
  Failure writeBody(std::string_view body, Deadline deadline);

  /// The next body. After an error for want of time, reading may go on; nothing is lost.
  Outcome<std::string> readBody(Deadline deadline);

  /// Whether a body has begun to arrive and is not whole yet.
  bool isInsideBody() const;

 private:
  struct Implementation;
  explicit CompanionLink(std::unique_ptr<Implementation> implementation);

  std::unique_ptr<Implementation> implementation_;
};

}  // namespace tarnix::companion
