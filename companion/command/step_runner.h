#pragma once

#include <string>

#include "companion/client/companion_client.h"
#include "companion/command/command_options.h"
#include "companion/command/exit_code.h"
#include "companion/command/step.h"
#include "probe/model/tap_command.h"

namespace tarnix::companion {

/// Carries steps out on a host, one after the other. Blocks its caller; each step ends within the
/// time that the options allow.
class StepRunner {
 public:
  struct Result {
    ExitCode code = ExitCode::success;
    /// For people: what was done, or why it was not.
    std::string message;
  };

  /// Both outlive this.
  StepRunner(CompanionClient& client, const CommandOptions& options)
      : client_(client), options_(options) {}

  Result run(const Step& step);

  /// Shows over the host how `step` went, for whoever looks at it. Not awaited: it is no step.
  void showVerdict(const Step& step, const Result& result);

 private:
  Result tap(const TapStep& step);
  Result tapAt(const TapCommand& command);
  Result swipe(const SwipeStep& step);
  Result type(const TypeStep& step);
  Result wait(const WaitStep& step);
  Result pause(const PauseStep& step);

  template <class Command>
  Result act(CompanionMessageType type, const Command& command, CompanionMessageType answer);
  Deadline deadline() const { return deadlineIn(options_.timeout()); }

  CompanionClient& client_;
  const CommandOptions& options_;
  // Whether the probe has answered on this connection: one that replaces another may be dropped
  // before that.
  bool isSettled_ = false;
};

}  // namespace tarnix::companion
