#pragma once

#include "probe/model/url.h"

namespace tarnix::platform {

/// Opens URLs as if somebody had followed a link inside the host. Main thread.
class UrlOpener {
 public:
  virtual ~UrlOpener() = default;

  /// Asks the handlers that the host registered for the URL's scheme first, then the desktop.
  /// Whether anybody took it is not known.
  virtual void open(const Url& url) = 0;
};

}  // namespace tarnix::platform
