#include "probe/bootstrap/probe_crash_handler.h"

#include <string>
#include <vector>

#include "probe/model/crash_report.h"
#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

class CrashHandler : public FakeWorldTest {
 protected:
  CrashHandler() {
    ProbeCrashHandler::detail::installed = false;
    ProbeCrashHandler::install("com.example.app");
  }

  static const std::map<std::string, std::string>& files() {
    return fakes::FakeServices::shared().files;
  }

  static CrashReport report() {
    return decodeJson<CrashReport>(files().at("/tmp/tarnix_crash_com_example_app.json")).value();
  }
};

TEST_F(CrashHandler, SaysForWhomItIsInstalled) {
  EXPECT_EQ(fakes::FakeServices::shared().standardErrorText(),
            "[TarnixProbe] Crash handler installed for com.example.app\n");
}

TEST_F(CrashHandler, HooksTheExceptionAndFiveSignals) {
  const fakes::FakeServices& services = fakes::FakeServices::shared();
  EXPECT_EQ(services.exceptionHandler, probeExceptionHandler);
  std::vector<int> numbers;
  for (const auto& [number, handler] : services.signalHandlers) {
    EXPECT_EQ(handler, probeSignalHandler);
    numbers.push_back(number);
  }
  EXPECT_EQ(numbers, (std::vector<int>{6, 11, 10, 8, 4}));
}

TEST_F(CrashHandler, InstallsOnceAndForTheFirstIdentifier) {
  fakes::FakeServices::shared().reset();
  ProbeCrashHandler::install("com.example.other");
  EXPECT_EQ(fakes::FakeServices::shared().standardErrorText(), "");
  EXPECT_TRUE(fakes::FakeServices::shared().signalHandlers.empty());
  probeSignalHandler(6);
  EXPECT_EQ(report().bundleId, "com.example.app");
}

TEST_F(CrashHandler, WritesASignal) {
  ProbeState::shared().setScreen("Checkout");
  probeSignalHandler(11);
  EXPECT_EQ(report(), (CrashReport{.type = "Signal",
                                   .name = "SIGSEGV",
                                   .reason = "Process received SIGSEGV",
                                   .stack = fakes::FakeServices::shared().callStack,
                                   .screen = "Checkout",
                                   .lastRequest = "none",
                                   .bundleId = "com.example.app",
                                   .timestamp = "2001-01-01T00:00:00Z"}));
}

TEST_F(CrashHandler, NamesSignalsByTheirNumbers) {
  const std::pair<int, const char*> cases[] = {{4, "SIGILL"},  {6, "SIGABRT"},  {8, "SIGFPE"},
                                               {10, "SIGBUS"}, {11, "SIGSEGV"}, {7, "SIG7"},
                                               {31, "SIG31"}};
  for (const auto& [number, name] : cases) {
    probeSignalHandler(number);
    EXPECT_EQ(report().name, name);
    EXPECT_EQ(report().reason, std::string("Process received ") + name);
  }
}

TEST_F(CrashHandler, WritesAnException) {
  probeExceptionHandler({"std::runtime_error", "no such page", {"thrower", "main"}});
  const CrashReport written = report();
  EXPECT_EQ(written.type, "NSException");
  EXPECT_EQ(written.name, "std::runtime_error");
  EXPECT_EQ(written.reason, "no such page");
  EXPECT_EQ(written.stack, (std::vector<std::string>{"thrower", "main"}));
  EXPECT_EQ(written.screen, "Unknown");
}

TEST_F(CrashHandler, SaysUnknownWhereAnExceptionGivesNoReason) {
  probeExceptionHandler({"int", std::nullopt, {}});
  EXPECT_EQ(report().reason, "Unknown");
}

TEST_F(CrashHandler, NamesTheNewestRequest) {
  TransferableNetworkRequest request;
  request.method = "POST";
  request.url = "https://example.com/a";
  request.statusCode = 201;
  ProbeState::shared().addRequest(request);
  request.method = "GET";
  request.url = "https://example.com/b";
  request.statusCode.reset();
  ProbeState::shared().addRequest(request);
  probeSignalHandler(6);
  EXPECT_EQ(report().lastRequest, "GET https://example.com/b → 0");
  request.statusCode = 404;
  ProbeState::shared().addRequest(request);
  probeSignalHandler(6);
  EXPECT_EQ(report().lastRequest, "GET https://example.com/b → 404");
}

TEST_F(CrashHandler, ReplacesAnEarlierReport) {
  probeSignalHandler(11);
  probeSignalHandler(8);
  EXPECT_EQ(files().size(), 1U);
  EXPECT_EQ(report().name, "SIGFPE");
}

TEST_F(CrashHandler, WritesForItsUserAlone) {
  probeSignalHandler(8);
  EXPECT_EQ(fakes::FakeServices::shared().fileReaders.at("/tmp/tarnix_crash_com_example_app.json"),
            platform::FileReaders::owner);
}

TEST_F(CrashHandler, WritesForPeople) {
  probeSignalHandler(8);
  EXPECT_TRUE(files().begin()->second.starts_with("{\n  \"type\": \"Signal\",\n"));
}

TEST_F(CrashHandler, WritesTextThatIsNotUtf8) {
  probeExceptionHandler({"caf\xE9", "caf\xE9", {"caf\xE9"}});
  EXPECT_EQ(report().name, "caf\uFFFD");
  EXPECT_EQ(report().reason, "caf\uFFFD");
  EXPECT_EQ(report().stack, std::vector<std::string>{"caf\uFFFD"});
}

TEST(CrashReportPath, HasUnderscoresForDots) {
  EXPECT_EQ(ProbeCrashHandler::reportPath("com.example.app"),
            "/tmp/tarnix_crash_com_example_app.json");
  EXPECT_EQ(ProbeCrashHandler::reportPath("unknown"), "/tmp/tarnix_crash_unknown.json");
}

}  // namespace
}  // namespace tarnix::tests
