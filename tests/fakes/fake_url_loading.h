#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "probe/platform/url_loading.h"

namespace tarnix::fakes {

class FakeUrlSessionConfiguration : public platform::UrlSessionConfiguration {
 public:
  explicit FakeUrlSessionConfiguration(std::optional<ProtocolClasses> initial)
      : classes(std::move(initial)) {}

  std::optional<ProtocolClasses> protocolClasses() const override { return classes; }
  void setProtocolClasses(std::optional<ProtocolClasses> replaced) override {
    classes = std::move(replaced);
    ++writes;
  }

  std::optional<ProtocolClasses> classes;
  int writes = 0;
};

/// What became of a session, and of its one task.
struct FakeUrlSessionRecord {
  std::shared_ptr<platform::UrlSessionConfiguration> configuration;
  platform::UrlSessionDelegate* delegate = nullptr;
  /// What the task was made for.
  std::optional<platform::UrlRequest> request;
  bool isResumed = false;
  int taskCancels = 0;
  int invalidations = 0;
};

/// URL loading in which the test plays the network: it calls the delegates of `sessions`, or of
/// what `onResume` is given. Sessions can be made on any thread.
class FakeUrlLoading : public platform::UrlLoading {
 public:
  using Configuration = std::shared_ptr<platform::UrlSessionConfiguration>;
  using OnResume = std::function<void(FakeUrlSessionRecord&)>;

  void registerClass(platform::UrlProtocolClass& protocolClass) override {
    registered.push_back(&protocolClass);
  }
  ConfigurationGetter* defaultSessionConfiguration() override {
    return hasDefault ? &defaultGetter : nullptr;
  }
  ConfigurationGetter* ephemeralSessionConfiguration() override {
    return hasEphemeral ? &ephemeralGetter : nullptr;
  }
  std::unique_ptr<platform::UrlSession> makeSession(
      Configuration configuration, platform::UrlSessionDelegate& delegate) override {
    auto made = std::make_shared<FakeUrlSessionRecord>();
    made->configuration = std::move(configuration);
    made->delegate = &delegate;
    {
      const std::lock_guard guard(mutex_);
      sessions.push_back(made);
    }
    return std::make_unique<Session>(std::move(made), onResume);
  }

  bool hasDefault = true;
  bool hasEphemeral = true;
  /// What the protocol list of a fresh configuration is.
  std::optional<platform::UrlSessionConfiguration::ProtocolClasses> freshClasses;
  int defaultCalls = 0;
  int ephemeralCalls = 0;
  std::vector<platform::UrlProtocolClass*> registered;
  std::vector<std::shared_ptr<FakeUrlSessionRecord>> sessions;
  /// Runs when a task starts, on its thread. Set before any session is made.
  OnResume onResume;
  ConfigurationGetter defaultGetter{[this] {
    ++defaultCalls;
    return std::make_shared<FakeUrlSessionConfiguration>(freshClasses);
  }};
  ConfigurationGetter ephemeralGetter{[this] {
    ++ephemeralCalls;
    return std::make_shared<FakeUrlSessionConfiguration>(freshClasses);
  }};

 private:
  class Task : public platform::UrlSessionDataTask {
   public:
    Task(std::shared_ptr<FakeUrlSessionRecord> record, OnResume onResume)
        : record_(std::move(record)), onResume_(std::move(onResume)) {}
    void resume() override {
      record_->isResumed = true;
      if (onResume_) {
        onResume_(*record_);
      }
    }
    void cancel() override { ++record_->taskCancels; }

   private:
    std::shared_ptr<FakeUrlSessionRecord> record_;
    OnResume onResume_;
  };

  class Session : public platform::UrlSession {
   public:
    Session(std::shared_ptr<FakeUrlSessionRecord> record, OnResume onResume)
        : record_(std::move(record)), onResume_(std::move(onResume)) {}
    std::unique_ptr<platform::UrlSessionDataTask> dataTask(
        const platform::UrlRequest& request) override {
      record_->request = request;
      return std::make_unique<Task>(record_, onResume_);
    }
    void invalidateAndCancel() override { ++record_->invalidations; }

   private:
    std::shared_ptr<FakeUrlSessionRecord> record_;
    OnResume onResume_;
  };

  std::mutex mutex_;
};

}  // namespace tarnix::fakes
