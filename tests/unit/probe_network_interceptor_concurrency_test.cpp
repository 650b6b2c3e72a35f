#include <atomic>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "probe/commands/probe_command_handler.h"
#include "probe/network/probe_intercept_rules.h"
#include "probe/network/probe_mock_rules.h"
#include "probe/network/probe_network_interceptor.h"
#include "probe/network/session_configuration_hook.h"
#include "tests/fakes/fake_url_protocol_client.h"
#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

using Calls = std::vector<std::string>;

constexpr int ruleCount = 1'000;
constexpr int threadCount = 4;
constexpr int requestsPerThread = 250;

/// Threads of the host make requests while the main thread carries out what a companion sends.
class ProbeNetworkInterceptorConcurrencyTest : public ServerTest {
 protected:
  ProbeNetworkInterceptorConcurrencyTest() {
    session_configuration_hook::forgetInstallation();
    world_.urlLoading.onResume = [](fakes::FakeUrlSessionRecord& session) {
      const platform::HttpResponseHead head{200, "HTTP/1.1", std::nullopt};
      static_cast<void>(session.delegate->didReceiveResponse({*session.request->url, "a/b", head}));
      session.delegate->didReceiveData("from the network");
      session.delegate->didComplete(std::nullopt);
    };
    startServer();
    companion_ = connectCompanion();
  }

  ~ProbeNetworkInterceptorConcurrencyTest() override {
    for (const Uuid& id : ids_) {
      ProbeMockRules::shared().removeRule(id);
      ProbeInterceptRules::shared().removeRule(id);
    }
    session_configuration_hook::forgetInstallation();
  }

  void addMock(const std::string& pattern, const char* mode, std::string body) {
    ids_.push_back(Uuid::random());
    ProbeMockRules::shared().addRule(
        {ids_.back(), pattern, pattern, mode, std::nullopt, 203, std::move(body), {}});
  }

  void addIntercept(const std::string& pattern, const char* mode) {
    ids_.push_back(Uuid::random());
    ProbeInterceptRules::shared().addRule({ids_.back(), pattern, pattern, mode, std::nullopt});
  }

  /// What the host sees of a request.
  static Calls callsFor(const std::string& url) {
    platform::UrlRequest request;
    request.url = Url(url);
    fakes::FakeUrlProtocolClient client;
    const auto loading = ProbeNetworkInterceptor::protocolClass().make(std::move(request), client);
    loading->startLoading();
    loading->stopLoading();
    return client.calls;
  }

  /// Runs `request` so many times on each thread, and `meanwhile` again and again on this one.
  template <class Request, class Meanwhile>
  void runBeside(Request request, Meanwhile meanwhile) {
    std::atomic<int> running = threadCount;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
      threads.emplace_back([&, thread] {
        for (int turn = 0; turn < requestsPerThread; ++turn) {
          request(thread, turn);
        }
        --running;
      });
    }
    int round = 0;
    do {
      meanwhile(round++);
      world_.settle();
    } while (running > 0);
    for (std::thread& thread : threads) {
      thread.join();
    }
    world_.settle();
  }

  static void handle(CompanionMessageType type, std::string payload) {
    ProbeCommandHandler::handle({type, std::move(payload), {}});
  }

  std::shared_ptr<fakes::FakeConnection> companion_;
  std::vector<Uuid> ids_;
};

const Calls mocked{"didReceive 203 not cached", "didLoad mocked", "didFinishLoading"};
const Calls passing{"didReceive 200 not cached", "didLoad {}", "didFinishLoading"};
const Calls forwarded{"didReceive 200 not cached", "didLoad from the network", "didFinishLoading"};

Calls intercepted(const std::string& name) {
  return {"didFailWithError TarnixProbe -1 Request intercepted by rule: " + name};
}

// Whatever comes and goes beside them, rules that stay apply to each of their requests and to no
// other; a rule that comes and goes applies to a request as a whole or not at all.
TEST_F(ProbeNetworkInterceptorConcurrencyTest, RulesComeAndGoWhileRequestsAreMade) {
  for (int index = 0; index < ruleCount; ++index) {
    const std::string pattern = "http://never.test/" + std::to_string(index);
    const char* const mode = index % 3 == 0 ? "regex" : index % 3 == 1 ? "prefix" : "contains";
    if (index % 2 == 0) {
      addMock(pattern, mode, "never");
    } else {
      addIntercept(pattern, mode);
    }
  }
  addMock("^http://mocked\\.test/", "regex", "mocked");
  addIntercept("http://intercepted.test/", "prefix");

  std::atomic<int> wrong = 0;
  const auto request = [&](int thread, int turn) {
    const std::string path = "/" + std::to_string(thread) + "/" + std::to_string(turn);
    switch (turn % 4) {
      case 0:
        wrong += callsFor("http://mocked.test" + path) == mocked ? 0 : 1;
        return;
      case 1:
        wrong +=
            callsFor("http://intercepted.test" + path) == intercepted("http://intercepted.test/")
                ? 0
                : 1;
        return;
      case 2:
        wrong += callsFor("http://forwarded.test" + path) == forwarded ? 0 : 1;
        return;
      default:
        break;
    }
    const Calls calls = callsFor("http://passing.test" + path);
    const bool isOneOfThem =
        calls == passing || calls == intercepted("passing") || calls == forwarded;
    wrong += isOneOfThem ? 0 : 1;
  };
  runBeside(request, [this](int round) {
    const std::string id = Uuid::random().toString();
    const std::string rule =
        R"({"urlPattern":"passing.test","name":"passing","ruleId":")" + id + "\"}";
    const std::string removal = R"({"ruleId":")" + id + "\"}";
    const bool isMock = round % 2 == 0;
    sendCommand(*companion_,
                isMock ? CompanionMessageType::commandAddMockRule
                       : CompanionMessageType::commandAddInterceptRule,
                rule);
    sendCommand(*companion_,
                isMock ? CompanionMessageType::commandRemoveMockRule
                       : CompanionMessageType::commandRemoveInterceptRule,
                removal);
  });
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(callsFor("http://passing.test/"), forwarded) << "each rule that came has gone";
}

// The newest are kept, each once, and those of one thread in their order.
TEST_F(ProbeNetworkInterceptorConcurrencyTest, TheStoreKeepsTheOrderOfEachThread) {
  addMock("mocked.test", "contains", "mocked");
  addIntercept("intercepted.test", "contains");
  const char* const hosts[] = {"mocked.test", "intercepted.test", "forwarded.test"};
  const auto request = [&](int thread, int turn) {
    static_cast<void>(callsFor(std::string("http://") + hosts[turn % 3] + "/" +
                               std::to_string(thread) + "/" + std::to_string(turn)));
  };
  runBeside(request, [](int) { EXPECT_LE(ProbeState::shared().httpRequests().size(), 500U); });

  const std::vector<TransferableNetworkRequest> kept = ProbeState::shared().httpRequests();
  EXPECT_EQ(kept.size(), ProbeState::capacity);
  std::map<char, int> lastTurns;
  for (const TransferableNetworkRequest& record : kept) {
    const int turn = std::stoi(record.path.substr(3));
    const auto [last, isFirst] = lastTurns.try_emplace(record.path[1], turn);
    if (!isFirst) {
      EXPECT_EQ(turn, last->second + 1) << record.path;
      last->second = turn;
    }
  }
  for (const auto& [thread, turn] : lastTurns) {
    EXPECT_EQ(turn, requestsPerThread - 1) << "of thread " << thread;
  }
}

// Nothing to compare: what each operation gives depends on when it comes. What is asked for is that
// all of them can be had at once.
TEST_F(ProbeNetworkInterceptorConcurrencyTest, TheStoreIsClearedAndReadMeanwhile) {
  addMock("mocked.test", "contains", "mocked");
  const auto request = [&](int thread, int turn) {
    EXPECT_EQ(callsFor("http://mocked.test/" + std::to_string(thread * 1'000 + turn)), mocked);
  };
  runBeside(request, [this](int round) {
    if (round % 3 == 0) {
      sendCommand(*companion_, CompanionMessageType::commandClearStore);
    } else if (round % 3 == 1) {
      EXPECT_LE(ProbeState::shared().recentRequests().size(), ProbeState::recentRequestCount);
    } else {
      // A companion that drops the other and is told everything.
      companion_ = connectCompanion();
    }
    ProbeState::shared().setScreen("screen " + std::to_string(round));
  });
  sendCommand(*companion_, CompanionMessageType::commandClearStore);
  EXPECT_TRUE(ProbeState::shared().httpRequests().empty());
}

}  // namespace
}  // namespace tarnix::tests
