#pragma once

#include <memory>
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

/// URL loading in which the test plays the network: it calls the delegates of `sessions`.
class FakeUrlLoading : public platform::UrlLoading {
 public:
  using Configuration = std::shared_ptr<platform::UrlSessionConfiguration>;

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
    sessions.push_back(std::make_shared<FakeUrlSessionRecord>());
    sessions.back()->configuration = std::move(configuration);
    sessions.back()->delegate = &delegate;
    return std::make_unique<Session>(sessions.back());
  }

  bool hasDefault = true;
  bool hasEphemeral = true;
  /// What the protocol list of a fresh configuration is.
  std::optional<platform::UrlSessionConfiguration::ProtocolClasses> freshClasses;
  int defaultCalls = 0;
  int ephemeralCalls = 0;
  std::vector<platform::UrlProtocolClass*> registered;
  std::vector<std::shared_ptr<FakeUrlSessionRecord>> sessions;
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
    explicit Task(std::shared_ptr<FakeUrlSessionRecord> record) : record_(std::move(record)) {}
    void resume() override { record_->isResumed = true; }
    void cancel() override { ++record_->taskCancels; }

   private:
    std::shared_ptr<FakeUrlSessionRecord> record_;
  };

  class Session : public platform::UrlSession {
   public:
    explicit Session(std::shared_ptr<FakeUrlSessionRecord> record) : record_(std::move(record)) {}
    std::unique_ptr<platform::UrlSessionDataTask> dataTask(
        const platform::UrlRequest& request) override {
      record_->request = request;
      return std::make_unique<Task>(record_);
    }
    void invalidateAndCancel() override { ++record_->invalidations; }

   private:
    std::shared_ptr<FakeUrlSessionRecord> record_;
  };
};

}  // namespace tarnix::fakes
