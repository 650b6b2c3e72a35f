#pragma once

#include "probe/platform/url_session_delegate.h"

namespace tarnix::platform {

/// The toolkit's own performance of a request, which is not started yet. One thread.
class UrlLoad {
 public:
  virtual ~UrlLoad() = default;

  /// Once. `delegate` hears what becomes of it, until `cancel`.
  virtual void resume(UrlSessionDelegate& delegate) = 0;
  virtual void cancel() = 0;
};

}  // namespace tarnix::platform
