#pragma once

#include <memory>

#include "probe/platform/url_request.h"

namespace tarnix::platform {

/// One request on its way.
class UrlSessionDataTask {
 public:
  virtual ~UrlSessionDataTask() = default;

  virtual void resume() = 0;
  virtual void cancel() = 0;
};

/// Loads requests by the platform's own means and tells its delegate, which lives longer. One
/// thread at a time.
class UrlSession {
 public:
  virtual ~UrlSession() = default;

  virtual std::unique_ptr<UrlSessionDataTask> dataTask(const UrlRequest& request) = 0;
  virtual void invalidateAndCancel() = 0;
};

}  // namespace tarnix::platform
