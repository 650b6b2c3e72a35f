#include "probe/platform/url_loading.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platforms/qt6/shared/url_load.h"
#include "tests/contract/qt6_host_world.h"
#include "tests/fakes/fake_url_loading.h"

namespace tarnix::contract {
namespace {

using Configuration = std::shared_ptr<platform::UrlSessionConfiguration>;
using ProtocolClasses = platform::UrlSessionConfiguration::ProtocolClasses;
using Calls = std::vector<std::string>;

class NoProtocol : public platform::UrlProtocolClass {
 public:
  bool canInit(const platform::UrlRequest&) override { return false; }
  platform::UrlRequest canonicalRequest(platform::UrlRequest request) override { return request; }
  std::unique_ptr<platform::UrlProtocol> make(platform::UrlRequest,
                                              platform::UrlProtocolClient&) override {
    return nullptr;
  }
};

class NotingDelegate : public platform::UrlSessionDelegate {
 public:
  ResponseDisposition didReceiveResponse(platform::UrlResponse response) override {
    calls.push_back("response " + response.url.absoluteString());
    return ResponseDisposition::allow;
  }
  void didReceiveData(std::string_view data) override { calls.push_back(std::string(data)); }
  platform::UrlRequest willPerformHTTPRedirection(const platform::UrlResponse&,
                                                  const platform::UrlRequest& request) override {
    return request;
  }
  void didComplete(const std::optional<platform::UrlError>& error) override {
    calls.push_back(error ? error->localizedDescription : "complete");
  }

  Calls calls;
};

/// What the network has for each request.
void answer(platform::UrlSessionDelegate& delegate) {
  static_cast<void>(
      delegate.didReceiveResponse({Url("http://shop.test/"), std::nullopt,
                                   platform::HttpResponseHead{200, "HTTP/1.1", std::nullopt}}));
  delegate.didReceiveData("hello");
  delegate.didComplete(std::nullopt);
}

class FakeLoadingWorld {
 public:
  FakeLoadingWorld() {
    loading_.onResume = [](fakes::FakeUrlSessionRecord& session) { answer(*session.delegate); };
  }

  platform::UrlLoading& loading() { return loading_; }
  static platform::UrlRequest request() {
    platform::UrlRequest request;
    request.url = Url("http://shop.test/");
    return request;
  }

 private:
  fakes::FakeUrlLoading loading_;
};

/// The toolkit's part is that a request carries the way in which the toolkit would load it.
class Qt6LoadingWorld {
 public:
  platform::UrlLoading& loading() { return *qt6Services().urlLoading; }
  static platform::UrlRequest request() {
    platform::UrlRequest request = FakeLoadingWorld::request();
    request.load = std::make_shared<Load>();
    return request;
  }

 private:
  class Load : public platform::UrlLoad {
   public:
    void resume(platform::UrlSessionDelegate& delegate) override { answer(delegate); }
    void cancel() override {}
  };
};

template <class World>
class UrlLoadingTest : public testing::Test {
 protected:
  using Getter = platform::UrlLoading::ConfigurationGetter;

  std::vector<Getter*> getters() {
    return {world_.loading().defaultSessionConfiguration(),
            world_.loading().ephemeralSessionConfiguration()};
  }

  World world_;
};

using Worlds = testing::Types<FakeLoadingWorld, Qt6LoadingWorld>;
TYPED_TEST_SUITE(UrlLoadingTest, Worlds);

TYPED_TEST(UrlLoadingTest, HandsOutAFreshConfigurationWithEachCall) {
  for (auto* const getter : this->getters()) {
    ASSERT_NE(getter, nullptr);
    const Configuration first = (*getter)();
    const Configuration second = (*getter)();
    ASSERT_NE(first, nullptr);
    EXPECT_NE(first, second);
    NoProtocol protocol;
    first->setProtocolClasses(ProtocolClasses{&protocol});
    EXPECT_NE(second->protocolClasses(), first->protocolClasses());
  }
}

TYPED_TEST(UrlLoadingTest, KeepsAListOfProtocolsAsItIsWritten) {
  NoProtocol one;
  NoProtocol other;
  for (auto* const getter : this->getters()) {
    const Configuration configuration = (*getter)();
    for (const std::optional<ProtocolClasses>& list :
         {std::optional(ProtocolClasses{&other, &one, &other}), std::optional(ProtocolClasses()),
          std::optional<ProtocolClasses>()}) {
      configuration->setProtocolClasses(list);
      EXPECT_EQ(configuration->protocolClasses(), list);
    }
  }
}

TYPED_TEST(UrlLoadingTest, HasItsGettersExchanged) {
  NoProtocol protocol;
  for (auto* const getter : this->getters()) {
    typename TestFixture::Getter wrapper([&] {
      const Configuration configuration = wrapper();
      configuration->setProtocolClasses(ProtocolClasses{&protocol});
      return configuration;
    });
    TestFixture::Getter::exchangeImplementations(*getter, wrapper);
    EXPECT_EQ((*getter)()->protocolClasses(), ProtocolClasses{&protocol});
    TestFixture::Getter::exchangeImplementations(*getter, wrapper);
    EXPECT_NE((*getter)()->protocolClasses(), ProtocolClasses{&protocol});
  }
}

TYPED_TEST(UrlLoadingTest, LoadsWhenATaskIsResumedAndNotBefore) {
  NotingDelegate delegate;
  for (const Configuration& configuration : {(*this->getters()[0])(), Configuration()}) {
    delegate.calls.clear();
    const auto session = this->world_.loading().makeSession(configuration, delegate);
    const auto task = session->dataTask(this->world_.request());
    EXPECT_EQ(delegate.calls, Calls());
    task->resume();
    EXPECT_EQ(delegate.calls, (Calls{"response http://shop.test/", "hello", "complete"}));
    for (int times = 0; times < 2; ++times) {
      task->cancel();
      session->invalidateAndCancel();
    }
    EXPECT_EQ(delegate.calls.size(), 3U) << "nothing comes behind the end";
  }
}

TYPED_TEST(UrlLoadingTest, LoadsOnAnyThread) {
  std::vector<NotingDelegate> delegates(4);
  std::vector<std::thread> threads;
  for (NotingDelegate& delegate : delegates) {
    threads.emplace_back([this, &delegate] {
      for (int turn = 0; turn < 100; ++turn) {
        const Configuration configuration = (*this->getters()[0])();
        const auto session = this->world_.loading().makeSession(configuration, delegate);
        session->dataTask(this->world_.request())->resume();
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  for (const NotingDelegate& delegate : delegates) {
    EXPECT_EQ(delegate.calls.size(), 300U);
  }
}

}  // namespace
}  // namespace tarnix::contract
