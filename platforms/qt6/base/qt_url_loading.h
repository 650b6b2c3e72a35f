#pragma once

#include <atomic>
#include <mutex>
#include <vector>

#include "platforms/qt6/shared/network_part.h"
#include "probe/platform/url_loading.h"

namespace tarnix::qt6 {

/// The toolkit's URL loading as the core sees it: each network access manager is a session made
/// from the default configuration. Configurations and protocols exist for the core only; the
/// toolkit knows neither.
class QtUrlLoading : public platform::UrlLoading, public RequestRouter {
 public:
  static QtUrlLoading& shared();

  void registerClass(platform::UrlProtocolClass& protocolClass) override;
  ConfigurationGetter* defaultSessionConfiguration() override { return &defaultGetter_; }
  ConfigurationGetter* ephemeralSessionConfiguration() override { return &ephemeralGetter_; }
  std::unique_ptr<platform::UrlSession> makeSession(
      std::shared_ptr<platform::UrlSessionConfiguration> configuration,
      platform::UrlSessionDelegate& delegate) override;

  bool hasProtocols() const noexcept override {
    return hasProtocols_.load(std::memory_order_relaxed);
  }

  /// A manager's configuration is nowhere to be seen between two requests, so each request asks for
  /// a fresh one.
  platform::UrlProtocolClass* protocolClassFor(const platform::UrlRequest& request) override;

 private:
  QtUrlLoading();

  ConfigurationGetter defaultGetter_;
  ConfigurationGetter ephemeralGetter_;
  std::atomic<bool> hasProtocols_ = false;
  std::mutex lock_;
  std::vector<platform::UrlProtocolClass*> registered_;
};

}  // namespace tarnix::qt6
