#include "platforms/qt6/base/qt_url_loading.h"

#include <algorithm>
#include <utility>

#include "platforms/qt6/shared/url_load.h"

namespace tarnix::qt6 {

namespace {

class Configuration : public platform::UrlSessionConfiguration {
 public:
  std::optional<ProtocolClasses> protocolClasses() const override { return classes_; }
  void setProtocolClasses(std::optional<ProtocolClasses> classes) override {
    classes_ = std::move(classes);
  }

 private:
  std::optional<ProtocolClasses> classes_;
};

class Task : public platform::UrlSessionDataTask {
 public:
  Task(std::shared_ptr<platform::UrlLoad> load, platform::UrlSessionDelegate& delegate)
      : load_(std::move(load)), delegate_(delegate) {}

  void resume() override {
    if (load_ != nullptr) {
      load_->resume(delegate_);
    } else {
      // Only requests of the host can be performed.
      delegate_.didComplete(platform::UrlError{"TarnixProbe", -1, "Unsupported request"});
    }
  }
  void cancel() override {
    if (load_ != nullptr) {
      load_->cancel();
    }
  }

 private:
  std::shared_ptr<platform::UrlLoad> load_;
  platform::UrlSessionDelegate& delegate_;
};

class Session : public platform::UrlSession {
 public:
  explicit Session(platform::UrlSessionDelegate& delegate) : delegate_(delegate) {}

  std::unique_ptr<platform::UrlSessionDataTask> dataTask(
      const platform::UrlRequest& request) override {
    return std::make_unique<Task>(request.load, delegate_);
  }
  // Its one task is cancelled by whoever holds it.
  void invalidateAndCancel() override {}

 private:
  platform::UrlSessionDelegate& delegate_;
};

std::shared_ptr<platform::UrlSessionConfiguration> makeConfiguration() {
  return std::make_shared<Configuration>();
}

}  // namespace

QtUrlLoading::QtUrlLoading()
    : defaultGetter_(makeConfiguration), ephemeralGetter_(makeConfiguration) {}

QtUrlLoading& QtUrlLoading::shared() {
  static QtUrlLoading& instance = *new QtUrlLoading;
  return instance;
}

void QtUrlLoading::registerClass(platform::UrlProtocolClass& protocolClass) {
  const std::lock_guard guard(lock_);
  if (std::find(registered_.begin(), registered_.end(), &protocolClass) == registered_.end()) {
    registered_.push_back(&protocolClass);
  }
  hasProtocols_ = true;
}

std::unique_ptr<platform::UrlSession> QtUrlLoading::makeSession(
    std::shared_ptr<platform::UrlSessionConfiguration>, platform::UrlSessionDelegate& delegate) {
  return std::make_unique<Session>(delegate);
}

platform::UrlProtocolClass* QtUrlLoading::protocolClassFor(const platform::UrlRequest& request) {
  std::vector<platform::UrlProtocolClass*> classes =
      defaultGetter_()->protocolClasses().value_or(std::vector<platform::UrlProtocolClass*>());
  {
    const std::lock_guard guard(lock_);
    classes.insert(classes.end(), registered_.begin(), registered_.end());
  }
  for (platform::UrlProtocolClass* const protocolClass : classes) {
    if (protocolClass->canInit(request)) {
      return protocolClass;
    }
  }
  return nullptr;
}

}  // namespace tarnix::qt6
