#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <future>
#include <optional>
#include <thread>

#include "companion/command/crash_reports.h"
#include "companion/command/exit_code.h"
#include "companion/command/log_filter.h"
#include "companion/command/log_text.h"
#include "probe/link/json_codec.h"
#include "probe/model/full_sync_payload.h"
#include "tests/companion/program_run.h"
#include "tests/companion/scripted_server.h"
#include "tests/companion/temporary_folder.h"

/// `tarnix logs` and `tarnix crash`: the real program, against a server that does as a test says.
namespace tarnix::companion {
namespace {

using Type = CompanionMessageType;

ProgramResult tarnix(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), TARNIX_PROGRAM);
  return runProgram(arguments, {});
}

TransferableLogEntry entry(std::string level, std::string category, std::string message) {
  TransferableLogEntry made;
  made.id = Uuid::random();
  made.level = std::move(level);
  made.category = std::move(category);
  made.message = std::move(message);
  made.screenName = "Home";
  return made;
}

const std::vector<TransferableLogEntry> captured = {
    entry("DEBUG", "app", "starting"), entry("INFO", "Net.HTTP", "connected"),
    entry("WARN", "Net.HTTP", "slow \x1b[31m"), entry("ERROR", "disk", "full")};

std::string syncOf(const std::vector<TransferableLogEntry>& entries) {
  FullSyncPayload sync;
  sync.logEntries = entries;
  return encodeJson(sync).value();
}

/// The lines without their times.
std::vector<std::string> linesOf(const ProgramResult& result) {
  std::vector<std::string> lines;
  std::istringstream stream(result.output);
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line.substr(std::min<std::size_t>(line.size(), 14)));
  }
  return lines;
}

std::vector<std::string> logs(const ScriptedServer& server, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {"logs", "--port", std::to_string(server.port())});
  const ProgramResult result = tarnix(arguments);
  EXPECT_EQ(result.exitCode(), 0) << result.errors;
  return linesOf(result);
}

const auto sayCaptured = [](ScriptedPeer& peer) {
  peer.send(Type::syncFull, syncOf(captured));
  peer.waitForEnd();
};

TEST(LogsCommand, ShowsWhatWasCaptured) {
  const ScriptedServer server({sayCaptured});
  EXPECT_EQ(logs(server, {}),
            (std::vector<std::string>{"DEBUG  app: starting", "INFO   Net.HTTP: connected",
                                      "WARN   Net.HTTP: slow \\x1B[31m", "ERROR  disk: full"}));
}

TEST(LogsCommand, Filters) {
  const ScriptedServer server({sayCaptured});
  EXPECT_EQ(logs(server, {"--level", "WARN"}).size(), 2U);
  EXPECT_EQ(logs(server, {"--category", "net.http"}).size(), 2U);
  EXPECT_EQ(logs(server, {"--text", "CONN"}),
            std::vector<std::string>{"INFO   Net.HTTP: connected"});
  EXPECT_EQ(logs(server, {"--newest", "1"}), std::vector<std::string>{"ERROR  disk: full"});
  EXPECT_EQ(logs(server, {"--level", "info", "--category", "NET", "--newest", "1"}),
            std::vector<std::string>{"WARN   Net.HTTP: slow \\x1B[31m"});
}

TEST(LogsCommand, SaysWhyThereIsNothing) {
  const auto sayNothing = [](ScriptedPeer& peer) {
    peer.send(Type::syncFull, syncOf({}));
    peer.waitForEnd();
  };
  const ScriptedServer silent({sayNothing});
  const ProgramResult nothing = tarnix({"logs", "--port", std::to_string(silent.port())});
  EXPECT_EQ(nothing.exitCode(), 0);
  EXPECT_EQ(nothing.output, "");
  EXPECT_EQ(nothing.errors, "-- the application has written nothing to its log yet\n");
  const ScriptedServer server({sayCaptured});
  const ProgramResult filtered =
      tarnix({"logs", "--text", "no such", "--port", std::to_string(server.port())});
  EXPECT_EQ(filtered.exitCode(), 0);
  EXPECT_EQ(filtered.output, "");
  EXPECT_EQ(filtered.errors, "-- none of its 4 lines fits\n");
}

TEST(LogsCommand, SaysThatTheApplicationHasEnded) {
  std::promise<void> isConnected;
  std::optional<ScriptedServer> server;
  server.emplace(std::vector<ScriptedServer::Script>{[&isConnected](ScriptedPeer& peer) {
    peer.send(Type::syncFull, syncOf(captured));
    isConnected.set_value();
    peer.waitForEnd();
  }});
  const std::string port = std::to_string(server->port());
  std::thread end([&] {
    isConnected.get_future().wait();
    server.reset();
  });
  const ProgramResult result = tarnix({"logs", "--follow", "--port", port});
  end.join();
  EXPECT_EQ(result.exitCode(), static_cast<int>(ExitCode::connectionFailed));
  EXPECT_NE(result.errors.find("the application has ended"), std::string::npos) << result.errors;
}

TEST(LogsCommand, RefusesALevelThatIsNone) {
  const ProgramResult result = tarnix({"logs", "--level", "loud", "--port", "1"});
  EXPECT_EQ(result.exitCode(), static_cast<int>(ExitCode::usage));
  EXPECT_NE(result.errors.find("a level is debug, info, warn or error"), std::string::npos);
}

TEST(LogsCommand, PrintsEntriesAsTheProbeSendsThem) {
  const ScriptedServer server({sayCaptured});
  const ProgramResult result =
      tarnix({"logs", "--json", "--level", "error", "--port", std::to_string(server.port())});
  EXPECT_EQ(decodeJson<TransferableLogEntry>(result.output), captured.back());
}

TEST(LogsCommand, FollowsOverALossAndShowsEachLineOnce) {
  const TransferableLogEntry later = entry("INFO", "app", "later");
  const TransferableLogEntry last = entry("INFO", "app", "last");
  const auto sayEvents = [&](ScriptedPeer& peer) {
    peer.send(Type::syncFull, syncOf({captured[0]}));
    peer.send(Type::eventLog, encodeJson(captured[0]).value());
    peer.send(Type::eventLog, encodeJson(captured[1]).value());
    peer.send(Type::heartbeat, "");
  };
  const auto sayLast = [&](ScriptedPeer& peer) {
    peer.send(Type::syncFull, syncOf({captured[0], captured[1], later}));
    peer.send(Type::eventLog, encodeJson(last).value());
    peer.waitForEnd();
  };
  const ScriptedServer server({sayEvents, sayLast});
  EXPECT_EQ(logs(server, {"--follow", "--count", "4"}),
            (std::vector<std::string>{"DEBUG  app: starting", "INFO   Net.HTTP: connected",
                                      "INFO   app: later", "INFO   app: last"}));
}

TransferableNetworkRequest exchangeAt(double seconds) {
  TransferableNetworkRequest exchange;
  exchange.id = Uuid::random();
  exchange.timestamp = {seconds};
  exchange.method = "GET";
  exchange.url = "http://shop.example/cart";
  exchange.host = "shop.example";
  exchange.path = "/cart";
  exchange.statusCode = 200;
  return exchange;
}

TEST(WatchCommand, ShowsTheLogBesideTheExchanges) {
  const auto script = [](ScriptedPeer& peer) {
    FullSyncPayload sync;
    sync.logEntries = {captured[0], captured[1]};
    sync.logEntries[0].timestamp = {10};
    sync.logEntries[1].timestamp = {30};
    sync.httpRequests = {exchangeAt(20)};
    peer.send(Type::syncFull, encodeJson(sync).value());
    peer.send(Type::eventLog, encodeJson(captured[3]).value());
    peer.send(Type::eventHttpRequest, encodeJson(exchangeAt(40)).value());
    peer.waitForEnd();
  };
  const ScriptedServer server({script});
  const auto watch = [&](std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"watch", "--port", std::to_string(server.port())});
    const ProgramResult result = tarnix(arguments);
    EXPECT_EQ(result.exitCode(), 0) << result.errors;
    std::vector<std::string> firstWords;
    for (const std::string& line : linesOf(result)) {
      firstWords.push_back(line.substr(0, line.find(' ')));
    }
    return firstWords;
  };
  using Words = std::vector<std::string>;
  EXPECT_EQ(watch({"--all", "--count", "5"}), (Words{"DEBUG", "GET", "INFO", "ERROR", "GET"}));
  EXPECT_EQ(watch({"--count", "2"}), (Words{"ERROR", "GET"}));
  EXPECT_EQ(watch({"--all", "--level", "error", "--count", "3"}), (Words{"GET", "ERROR", "GET"}));
  EXPECT_EQ(watch({"--all", "--no-log", "--count", "2"}), (Words{"GET", "GET"}));
  EXPECT_EQ(watch({"--all", "--category", "net.", "--count", "3"}), (Words{"GET", "INFO", "GET"}));
  EXPECT_EQ(watch({"--all", "--text", "FULL", "--count", "3"}), (Words{"GET", "ERROR", "GET"}));
}

TEST(LogFilter, KnowsLevelsByTheirNames) {
  EXPECT_EQ(logLevel("Warning"), LogLevel::warn);
  EXPECT_EQ(logLevel("ERR"), LogLevel::error);
  EXPECT_EQ(logLevel("warni"), std::nullopt);
  EXPECT_EQ(logLevel(""), std::nullopt);
}

TEST(LogText, IsColouredByLevel) {
  const Terminal colourful(true, true, 80);
  EXPECT_NE(logLine(captured[3], colourful).find("\x1b[31m"), std::string::npos);
  EXPECT_NE(logLine(captured[0], colourful).find("\x1b[2m"), std::string::npos);
  EXPECT_EQ(logLine(captured[1], colourful).find('\x1b'), std::string::npos);
}

class CrashCommand : public testing::Test {
 protected:
  void leave(const std::string& identifier, const CrashReport& report, int age) {
    const std::filesystem::path file = folder_.path() / ("tarnix_crash_" + identifier + ".json");
    std::ofstream(file) << encodeJson(report).value();
    std::filesystem::last_write_time(
        file, std::filesystem::file_time_type::clock::now() - std::chrono::seconds(age));
  }

  ProgramResult crash(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"crash", "--in", folder_.path().string()});
    ProgramResult result = tarnix(arguments);
    EXPECT_EQ(result.exitCode(), 0) << result.errors;
    return result;
  }

  static CrashReport reportOf(const std::string& identifier) {
    return {
        "NSException",  "std::runtime_error", "no such page\x1b[2J", {"0   app   main + 4"}, "Home",
        "GET /a → 404", identifier,           "2026-03-01T09:30:00Z"};
  }

  TemporaryFolder folder_;
};

TEST_F(CrashCommand, SaysWhenThereIsNothing) {
  EXPECT_EQ(crash({}).output, "No application has left a crash report.\n");
  EXPECT_EQ(crash({"org.example"}).output,
            "No application with \"org.example\" in its identifier has left a crash report.\n");
}

TEST_F(CrashCommand, ShowsTheNewestAndListsTheOthers) {
  leave("old", reportOf("org.example.old"), 100);
  leave("new", reportOf("org.example.new"), 1);
  const std::string output = crash({}).output;
  EXPECT_TRUE(
      output.starts_with("org.example.new  std::runtime_error: no such page\\x1B[2J\n"
                         "  when     2026-03-01T09:30:00Z\n"
                         "  screen   Home\n"
                         "  request  GET /a → 404\n"))
      << output;
  EXPECT_NE(output.find("    0   app   main + 4\n"), std::string::npos);
  EXPECT_NE(output.find("org.example.old"), std::string::npos);
  EXPECT_EQ(crash({"example.old"}).output.find("org.example.new"), std::string::npos);
  EXPECT_NE(crash({"--all"}).output.find("tarnix_crash_old.json"), std::string::npos);
}

TEST_F(CrashCommand, PrintsJson) {
  leave("a", reportOf("a"), 1);
  const std::string output = crash({"--json"}).output;
  EXPECT_NE(output.find(R"("reports":[{"file":)"), std::string::npos);
  EXPECT_NE(output.find(R"("name":"std::runtime_error")"), std::string::npos);
}

TEST_F(CrashCommand, PassesOverWhatIsNoReport) {
  leave("good", reportOf("good"), 1);
  std::ofstream(folder_.path() / "tarnix_crash_bad.json") << "{";
  std::ofstream(folder_.path() / "tarnix_crash_large.json") << std::string(5'000'000, ' ');
  std::filesystem::create_directory(folder_.path() / "tarnix_crash_folder.json");
  std::filesystem::create_symlink(folder_.path() / "tarnix_crash_good.json",
                                  folder_.path() / "tarnix_crash_link.json");
  const std::vector<FoundCrashReport> found = findCrashReports(folder_.path(), "");
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].report, reportOf("good"));
}

TEST_F(CrashCommand, FindsAnApplicationInUpperAndLowerCase) {
  leave("good", reportOf("good"), 1);
  EXPECT_EQ(findCrashReports(folder_.path(), "GOOD").size(), 1U);
  EXPECT_TRUE(findCrashReports(folder_.path(), "BAD").empty());
}

}  // namespace
}  // namespace tarnix::companion
