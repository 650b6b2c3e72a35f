#pragma once

#include <memory>

#include "probe/platform/exchangeable_method.h"
#include "probe/platform/url_protocol.h"
#include "probe/platform/url_session.h"
#include "probe/platform/url_session_configuration.h"
#include "probe/platform/url_session_delegate.h"

namespace tarnix::platform {

/// The host's URL loading system. Any thread.
class UrlLoading {
 public:
  using ConfigurationGetter = ExchangeableMethod<std::shared_ptr<UrlSessionConfiguration>()>;

  virtual ~UrlLoading() = default;

  /// Has the class asked for the requests of every session, behind those of the session's own
  /// configuration. For the life of the process.
  virtual void registerClass(UrlProtocolClass& protocolClass) = 0;

  /// The methods that hand out new configurations, a fresh one with each call. Null where the
  /// platform has none.
  virtual ConfigurationGetter* defaultSessionConfiguration() = 0;
  virtual ConfigurationGetter* ephemeralSessionConfiguration() = 0;

  /// `configuration` null: the platform's own default.
  virtual std::unique_ptr<UrlSession> makeSession(
      std::shared_ptr<UrlSessionConfiguration> configuration, UrlSessionDelegate& delegate) = 0;
};

}  // namespace tarnix::platform
