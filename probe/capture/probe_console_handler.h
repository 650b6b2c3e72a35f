#pragma once

#include "probe/platform/web_view.h"

namespace tarnix {

/// Makes console entries of what the script in the pages posts. Main thread.
class ProbeConsoleHandler : public platform::ScriptMessageHandler {
 public:
  static ProbeConsoleHandler& shared();

  /// Messages without a level or a text are passed over: any script of a page may post.
  void userContentController(platform::UserContentController& controller,
                             const platform::ScriptMessage& message) override;
};

}  // namespace tarnix
