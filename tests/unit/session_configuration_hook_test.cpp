#include "probe/network/session_configuration_hook.h"

#include "probe/network/probe_network_interceptor.h"
#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

using ProtocolClasses = platform::UrlSessionConfiguration::ProtocolClasses;

class OtherClass : public platform::UrlProtocolClass {
 public:
  bool canInit(const platform::UrlRequest&) override { return false; }
  platform::UrlRequest canonicalRequest(platform::UrlRequest request) override { return request; }
  std::unique_ptr<platform::UrlProtocol> make(platform::UrlRequest,
                                              platform::UrlProtocolClient&) override {
    return nullptr;
  }
};

class SessionConfigurationHookTest : public FakeWorldTest {
 protected:
  SessionConfigurationHookTest() { session_configuration_hook::forgetInstallation(); }
  ~SessionConfigurationHookTest() override { session_configuration_hook::forgetInstallation(); }

  static std::vector<std::string> lines() { return fakes::FakeServices::shared().lines; }

  std::optional<ProtocolClasses> classesOfDefault() {
    return (*world_.urlLoading.defaultSessionConfiguration())()->protocolClasses();
  }
  std::optional<ProtocolClasses> classesOfEphemeral() {
    return (*world_.urlLoading.ephemeralSessionConfiguration())()->protocolClasses();
  }

  platform::UrlProtocolClass* const interceptor_ = &ProbeNetworkInterceptor::protocolClass();
  OtherClass one_;
  OtherClass other_;
};

TEST_F(SessionConfigurationHookTest, InstallRegistersExchangesAndSaysSo) {
  ProbeNetworkInterceptor::install();
  EXPECT_EQ(world_.urlLoading.registered, ProtocolClasses{interceptor_});
  EXPECT_EQ(lines(), (std::vector<std::string>{
                         "stderr: [TarnixProbe] URLSessionConfiguration swizzle installed\n",
                         "stderr: [TarnixProbe] Network interceptor installed\n"}));
  EXPECT_EQ(classesOfDefault(), ProtocolClasses{interceptor_});
  EXPECT_EQ(classesOfEphemeral(), ProtocolClasses{interceptor_});
}

TEST_F(SessionConfigurationHookTest, TheServerInstallsItFirst) {
  ASSERT_FALSE(captureInstallers().empty());
  ASSERT_NE(captureInstallers()[0].install, nullptr);
  captureInstallers()[0].install("org.example.demo");
  EXPECT_EQ(world_.urlLoading.registered, ProtocolClasses{interceptor_});
}

TEST_F(SessionConfigurationHookTest, LeavesConfigurationsAloneBeforeItIsInstalled) {
  EXPECT_EQ(classesOfDefault(), std::nullopt);
  EXPECT_EQ(classesOfEphemeral(), std::nullopt);
}

TEST_F(SessionConfigurationHookTest, HandsOutAFreshConfigurationWithEachCall) {
  session_configuration_hook::installSwizzle();
  const auto first = (*world_.urlLoading.defaultSessionConfiguration())();
  const auto second = (*world_.urlLoading.defaultSessionConfiguration())();
  EXPECT_NE(first, second);
  EXPECT_EQ(world_.urlLoading.defaultCalls, 2);
  EXPECT_EQ(world_.urlLoading.ephemeralCalls, 0);
}

TEST_F(SessionConfigurationHookTest, DoesNotExchangeBackTheSecondTime) {
  session_configuration_hook::installSwizzle();
  session_configuration_hook::installSwizzle();
  EXPECT_EQ(lines().size(), 1U);
  EXPECT_EQ(classesOfDefault(), ProtocolClasses{interceptor_});
}

TEST_F(SessionConfigurationHookTest, TheWrappersOwnNamesReachThePlatform) {
  session_configuration_hook::installSwizzle();
  EXPECT_EQ(session_configuration_hook::probe_defaultConfig()->protocolClasses(), std::nullopt);
  EXPECT_EQ(session_configuration_hook::probe_ephemeralConfig()->protocolClasses(), std::nullopt);
  EXPECT_EQ(world_.urlLoading.defaultCalls, 1);
  EXPECT_EQ(world_.urlLoading.ephemeralCalls, 1);
}

TEST_F(SessionConfigurationHookTest, SkipsAGetterThatThePlatformDoesNotHave) {
  world_.urlLoading.hasEphemeral = false;
  session_configuration_hook::installSwizzle();
  EXPECT_EQ(lines().size(), 1U);
  EXPECT_EQ(classesOfDefault(), ProtocolClasses{interceptor_});
  world_.urlLoading.hasEphemeral = true;
  EXPECT_EQ(classesOfEphemeral(), std::nullopt);
}

TEST_F(SessionConfigurationHookTest, SaysThatItIsInstalledWhereThereIsNothingToExchange) {
  world_.urlLoading.hasDefault = false;
  world_.urlLoading.hasEphemeral = false;
  ProbeNetworkInterceptor::install();
  EXPECT_EQ(lines().size(), 2U);
}

TEST_F(SessionConfigurationHookTest, InstallsInAHostThatLoadsNothing) {
  platform::Platform without = platform::current();
  without.urlLoading = nullptr;
  platform::setCurrent(without);
  ProbeNetworkInterceptor::install();
  EXPECT_EQ(lines().size(), 2U);
}

TEST_F(SessionConfigurationHookTest, InjectsTheInterceptorOnceAndInFront) {
  const struct {
    std::optional<ProtocolClasses> before;
    ProtocolClasses after;
  } cases[] = {
      {std::nullopt, {interceptor_}},
      {ProtocolClasses{}, {interceptor_}},
      {ProtocolClasses{&one_, &other_}, {interceptor_, &one_, &other_}},
      {ProtocolClasses{interceptor_, &one_}, {interceptor_, &one_}},
      {ProtocolClasses{&one_, interceptor_}, {&one_, interceptor_}},
  };
  for (const auto& [before, after] : cases) {
    fakes::FakeUrlSessionConfiguration configuration(before);
    session_configuration_hook::injectProbeInterceptor(configuration);
    EXPECT_EQ(configuration.classes, after);
    EXPECT_EQ(configuration.writes, 1);
    session_configuration_hook::injectProbeInterceptor(configuration);
    EXPECT_EQ(configuration.classes, after) << "again";
  }
}

TEST_F(SessionConfigurationHookTest, KeepsTheInterceptorOutOfItsOwnSessions) {
  world_.urlLoading.freshClasses = ProtocolClasses{&one_, interceptor_, &other_, interceptor_};
  session_configuration_hook::installSwizzle();
  const auto configuration = session_configuration_hook::internalConfig();
  EXPECT_EQ(configuration->protocolClasses(), (ProtocolClasses{&one_, &other_}));
  EXPECT_EQ(session_configuration_hook::internalConfig(), configuration) << "made once";
  EXPECT_EQ(world_.urlLoading.defaultCalls, 1) << "through the getter that is hooked";
}

TEST_F(SessionConfigurationHookTest, WritesAnAbsentListBackAbsent) {
  const auto configuration = session_configuration_hook::internalConfig();
  EXPECT_EQ(configuration->protocolClasses(), std::nullopt);
  EXPECT_EQ(std::static_pointer_cast<fakes::FakeUrlSessionConfiguration>(configuration)->writes, 1);
}

TEST_F(SessionConfigurationHookTest, HasNoConfigurationOfItsOwnWhereThePlatformHasNone) {
  world_.urlLoading.hasDefault = false;
  EXPECT_EQ(session_configuration_hook::internalConfig(), nullptr);
}

}  // namespace
}  // namespace tarnix::tests
