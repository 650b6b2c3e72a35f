#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "companion/command/audit_report.h"
#include "companion/command/exit_code.h"
#include "companion/command/view_tree.h"
#include "probe/link/json_codec.h"
#include "probe/model/accessibility_audit_response.h"
#include "probe/model/find_command.h"
#include "probe/model/find_response.h"
#include "probe/model/perf_snapshot_response.h"
#include "probe/model/screen_text_response.h"
#include "probe/model/screenshot_response.h"
#include "probe/model/snapshot_response.h"
#include "probe/model/web_view_console_response.h"
#include "tests/companion/program_run.h"
#include "tests/companion/scripted_server.h"
#include "tests/companion/temporary_folder.h"

/// The commands about the screen: the real program, against a server that does as a test says.
namespace tarnix::companion {
namespace {

using Type = CompanionMessageType;

/// Answers every command of a type with the same record.
template <Record R>
ScriptedServer::Script answering(Type command, Type response, R record) {
  return [=](ScriptedPeer& peer) {
    peer.sendFullSync();
    while (const auto message = peer.receive()) {
      EXPECT_EQ(message->type, command);
      peer.send(response, encodeJson(record).value());
    }
  };
}

ProgramResult tarnix(const ScriptedServer& server, std::vector<std::string> arguments,
                     const ProgramOptions& options = {}) {
  arguments.insert(arguments.begin(), TARNIX_PROGRAM);
  arguments.insert(arguments.end(), {"--port", std::to_string(server.port())});
  return runProgram(arguments, options);
}

void expectExit(ExitCode code, const ProgramResult& result) {
  EXPECT_EQ(result.exitCode(), static_cast<int>(code)) << result.output << result.errors;
}

std::string contents(const std::filesystem::path& file) {
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  return text.str();
}

TEST(TextCommand, PrintsALineForEach) {
  const ScriptedServer server({answering(Type::commandScreenText, Type::responseScreenText,
                                         ScreenTextResponse{"Home", {"Hello", "a\x1b[2J"}})});
  const ProgramResult result = tarnix(server, {"text"});
  expectExit(ExitCode::success, result);
  EXPECT_EQ(result.output, "Hello\na\\x1B[2J\n");
  EXPECT_EQ(tarnix(server, {"text", "--json"}).output,
            "{\"screen\":\"Home\",\"lines\":[\"Hello\",\"a\\u001B[2J\"]}\n");
}

TEST(TextCommand, SaysBesideTheLinesThatThereAreNone) {
  const ScriptedServer server({answering(Type::commandScreenText, Type::responseScreenText,
                                         ScreenTextResponse{"Home", {}})});
  const ProgramResult result = tarnix(server, {"text"});
  expectExit(ExitCode::success, result);
  EXPECT_EQ(result.output, "");
  EXPECT_NE(result.errors.find("nothing is written on the screen \"Home\""), std::string::npos)
      << result.errors;
  EXPECT_EQ(tarnix(server, {"text", "--json"}).errors, "");
}

TEST(FindCommand, SaysWhereToTap) {
  const FoundElement save{"Save", "Button", 10, 20, 100, 44, 60, 42, true};
  const ScriptedServer server({answering(Type::commandFindElement, Type::responseFindElement,
                                         FindResponse{"Home", "save", {save}})});
  const ProgramResult result = tarnix(server, {"find", "save"});
  expectExit(ExitCode::success, result);
  EXPECT_NE(result.output.find("Button  Save"), std::string::npos) << result.output;
  EXPECT_NE(result.output.find("60,42"), std::string::npos);
  EXPECT_NE(result.output.find("10,20 100x44"), std::string::npos);
  EXPECT_EQ(decodeJson<FindResponse>(tarnix(server, {"find", "save", "--json"}).output)->results,
            std::vector{save});
}

TEST(FindCommand, AsksForTheWholeLabelOnlyWhenToldTo) {
  const auto echo = [](ScriptedPeer& peer) {
    peer.sendFullSync();
    while (const auto message = peer.receive()) {
      const std::string exact =
          message->decode<FindCommand>()->exact.value_or(false) ? "yes" : "no";
      peer.send(Type::responseFindElement,
                encodeJson(FindResponse{exact, message->decode<FindCommand>()->text, {}}).value());
    }
  };
  const ScriptedServer server({echo});
  const ProgramResult part = tarnix(server, {"find", "a b", "--json"});
  expectExit(ExitCode::negative, part);
  EXPECT_EQ(part.output, "{\"screen\":\"no\",\"query\":\"a b\",\"results\":[]}\n");
  EXPECT_EQ(tarnix(server, {"find", "a b", "--exact", "--json"}).output,
            "{\"screen\":\"yes\",\"query\":\"a b\",\"results\":[]}\n");
  const ProgramResult none = tarnix(server, {"find", "x"});
  expectExit(ExitCode::negative, none);
  EXPECT_NE(none.errors.find("nothing on the screen"), std::string::npos) << none.errors;
}

TEST(SnapshotCommand, ListsViews) {
  const SnapshotResponse snapshot{"Home",
                                  {{"Go", std::nullopt, "Button", 1, 2, 30, 40, true},
                                   {std::nullopt, "cart", "CartView", 5, 6, 70, 80, false}}};
  const ScriptedServer server(
      {answering(Type::commandRequestSnapshot, Type::responseSnapshot, snapshot)});
  const ProgramResult result = tarnix(server, {"snapshot"});
  expectExit(ExitCode::success, result);
  EXPECT_NE(result.output.find("Home: 2 views"), std::string::npos) << result.output;
  EXPECT_NE(result.output.find("1,2 30x40  yes"), std::string::npos) << result.output;
  EXPECT_NE(result.output.find("CartView  -      cart"), std::string::npos) << result.output;
  EXPECT_EQ(decodeJson<SnapshotResponse>(tarnix(server, {"snapshot", "--json"}).output), snapshot);
}

TEST(SnapshotCommand, DrawsATreeOnATerminal) {
  const SnapshotResponse snapshot{"Home",
                                  {{"Shop", std::nullopt, "Window", 0, 0, 400, 300, false},
                                   {std::nullopt, "bar", "Bar", 0, 0, 400, 40, false},
                                   {"Back", std::nullopt, "Button", 0, 0, 60, 40, true},
                                   {"Find", std::nullopt, "Button", 60, 0, 60, 40, true},
                                   {"Outside", std::nullopt, "Label", 390, 10, 60, 20, false},
                                   {"a\x1b[2J", std::nullopt, "Label", 10, 100, 60, 20, false},
                                   {"Twice", std::nullopt, "Label", 10, 100, 60, 20, false}}};
  const ScriptedServer server(
      {answering(Type::commandRequestSnapshot, Type::responseSnapshot, snapshot)});
  const ProgramResult result =
      tarnix(server, {"snapshot", "--no-color"}, {.environment = {}, .terminalColumns = 44});
  expectExit(ExitCode::success, result);
  EXPECT_EQ(result.output,
            "Home: 7 views\r\n"
            "Window \"Shop\" 0,0 400x300\r\n"
            "├─ Bar #bar 0,0 400x40\r\n"
            "│  ├─ Button \"Back\" 0,0 60x40 touch\r\n"
            "│  └─ Button \"Find\" 60,0 60x40 touch\r\n"
            "└─ Label \"a\\x1B[2J\" 10,100 60x20\r\n"
            "   └─ Label \"Twice\" 10,100 60x20\r\n"
            "Label \"Outside\" 390,10 60x20\r\n");
}

TEST(ViewTree, CutsLongLabelsAndLeavesThePlaceToBeRead) {
  const std::string line =
      treeOf({{std::string(100, 'x'), std::nullopt, "Label", 1, 2, 30, 40, true}},
             Terminal(true, false, 40));
  EXPECT_EQ(line, "Label \"xxxxxxxxxxxxxxxx… 1,2 30x40 touch\n");
}

TEST(ViewTree, HoldsTenThousandViewsOneInTheOther) {
  std::vector<SnapshotElement> views;
  constexpr int count = 10'000;
  for (int index = 0; index < count; ++index) {
    views.push_back({std::nullopt, std::nullopt, "View", index, index, 2 * (count - index),
                     2 * (count - index), false});
  }
  const std::string tree = treeOf(views, Terminal(true, false, 80));
  EXPECT_EQ(std::count(tree.begin(), tree.end(), '\n'), count);
}

const std::string pngBytes("\x89PNG\r\n\x1a\n\0\xff and so on", 20);

ScriptedServer::Script sendingPicture() {
  return answering(Type::commandRequestScreenshot, Type::responseScreenshot,
                   ScreenshotResponse{"Home", {pngBytes}});
}

TEST(ScreenshotCommand, WritesTheFileByteForByte) {
  const ScriptedServer server({sendingPicture()});
  const TemporaryFolder folder;
  const std::string file = folder.path() / "a.png";
  const ProgramResult result = tarnix(server, {"screenshot", file});
  expectExit(ExitCode::success, result);
  EXPECT_EQ(contents(file), pngBytes);
  EXPECT_NE(result.output.find(file), std::string::npos);
  EXPECT_EQ(tarnix(server, {"screenshot"}).output, pngBytes) << "into a pipe";
  EXPECT_EQ(tarnix(server, {"screenshot", "-"}).output, pngBytes);
  EXPECT_EQ(decodeJson<ScreenshotResponse>(tarnix(server, {"screenshot", "--json"}).output)
                .value()
                .base64PNG.data,
            pngBytes);
  expectExit(ExitCode::failure, tarnix(server, {"screenshot", "/nonexistent/a.png"}));
}

TEST(ScreenshotCommand, SaysForProgramsWhereThePictureIs) {
  const ScriptedServer server({sendingPicture()});
  const TemporaryFolder folder;
  const std::string file = folder.path() / "a.png";
  EXPECT_EQ(tarnix(server, {"screenshot", file, "--json"}).output,
            R"({"screen":"Home","file":")" + file + "\"}\n");
  EXPECT_EQ(contents(file), pngBytes);
  EXPECT_EQ(tarnix(server, {"screenshot", "-", "--json"}).output, pngBytes);
}

TEST(ScreenshotCommand, ShowsThePictureOnATerminalThatCan) {
  const ScriptedServer server({sendingPicture()});
  const auto on = [&](Variables environment) {
    environment.emplace_back("TMUX", "");
    return tarnix(server, {"screenshot"},
                  {.environment = std::move(environment), .terminalColumns = 80});
  };
  EXPECT_NE(on({{"TERM", "xterm-kitty"}}).output.find("\x1b_Ga=T,f=100,m=0;"), std::string::npos);
  EXPECT_NE(on({{"TERM", "xterm"}, {"TERM_PROGRAM", "WezTerm"}}).output.find("\x1b]1337;File="),
            std::string::npos);
  const ProgramResult unknown = on({{"TERM", "xterm"}, {"TERM_PROGRAM", ""}});
  expectExit(ExitCode::usage, unknown);
  EXPECT_EQ(unknown.output.find("\x1b_G"), std::string::npos);
}

const AccessibilityAuditResponse audited{
    "Sign \"up\"",
    {{"Button at (15,15)", "Button missing accessibility label", "error", 0, 0, 30, 30},
     {"Link \"Help\"", "Touch target too small (20x20, minimum 44x44)", "warning", 1, 2, 20, 20}},
    2};

TEST(AuditCommand, EndsAsABuildNeedsIt) {
  AccessibilityAuditResponse warnings = audited;
  warnings.issues.erase(warnings.issues.begin());
  {
    const ScriptedServer server(
        {answering(Type::commandAccessibilityAudit, Type::responseAccessibilityAudit, audited)});
    const ProgramResult result = tarnix(server, {"audit"});
    expectExit(ExitCode::negative, result);
    EXPECT_NE(result.output.find("1 error, 1 warning\n"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("Link \"Help\""), std::string::npos);
  }
  {
    const ScriptedServer server(
        {answering(Type::commandAccessibilityAudit, Type::responseAccessibilityAudit, warnings)});
    expectExit(ExitCode::success, tarnix(server, {"audit"}));
    expectExit(ExitCode::negative, tarnix(server, {"audit", "--strict"}));
  }
}

TEST(AuditCommand, WritesALogForCodeReview) {
  const ScriptedServer server(
      {answering(Type::commandAccessibilityAudit, Type::responseAccessibilityAudit, audited)});
  const TemporaryFolder folder;
  const std::string file = folder.path() / "audit.sarif";
  expectExit(ExitCode::negative, tarnix(server, {"audit", "--sarif", file}));
  const std::string log = contents(file);
  const std::optional<JsonDocument> document = JsonDocument::parse(log);
  ASSERT_TRUE(document) << log;
  EXPECT_EQ(document->root().member("version")->string(), "2.1.0");
  const JsonValue run = document->root().member("runs")->element(0);
  const JsonValue results = *run.member("results");
  ASSERT_EQ(results.arraySize(), 2U);
  EXPECT_EQ(results.element(0).member("ruleId")->string(), "button-label");
  EXPECT_EQ(results.element(0).member("level")->string(), "error");
  EXPECT_EQ(results.element(1).member("ruleId")->string(), "touch-target");
  EXPECT_EQ(results.element(1).member("level")->string(), "warning");
  EXPECT_EQ(results.element(1).member("message")->member("text")->string(),
            "Link \"Help\": Touch target too small (20x20, minimum 44x44)");
  const JsonValue location = results.element(1).member("locations")->element(0);
  EXPECT_EQ(
      location.member("physicalLocation")->member("artifactLocation")->member("uri")->string(),
      "Scripted/Sign%20%22up%22");
}

TEST(AuditCommand, PrintsThatLogAloneWhenToldTo) {
  const ScriptedServer server(
      {answering(Type::commandAccessibilityAudit, Type::responseAccessibilityAudit, audited)});
  const ProgramResult result = tarnix(server, {"audit", "--sarif", "-"});
  expectExit(ExitCode::negative, result);
  const std::optional<JsonDocument> document = JsonDocument::parse(result.output);
  ASSERT_TRUE(document) << result.output;
  EXPECT_EQ(document->root().member("version")->string(), "2.1.0");
}

TEST(PerfCommand, PrintsALineEachTime) {
  const PerfSnapshotResponse perf{59.5, 142.25, 58, 150.5, "Home"};
  const ScriptedServer server(
      {answering(Type::commandPerfSnapshot, Type::responsePerfSnapshot, perf)});
  const ProgramResult once = tarnix(server, {"perf"});
  expectExit(ExitCode::success, once);
  EXPECT_NE(once.output.find("59.5     58.0      142.2      150.5  Home\n"), std::string::npos)
      << once.output;
  const ProgramResult json =
      tarnix(server, {"perf", "--watch", "--interval", "0.02", "--count", "3", "--json"});
  expectExit(ExitCode::success, json);
  EXPECT_EQ(std::count(json.output.begin(), json.output.end(), '\n'), 3);
  const ProgramResult watched =
      tarnix(server, {"perf", "--watch", "--interval", "0.02", "--count", "2"});
  EXPECT_EQ(std::count(watched.output.begin(), watched.output.end(), '\n'), 3) << watched.output;
}

TEST(PerfCommand, PrintsNoPeakBelowWhatIsUsedNow) {
  const PerfSnapshotResponse perf{60, 142.25, 60, 141.5, "Home"};
  const ScriptedServer server(
      {answering(Type::commandPerfSnapshot, Type::responsePerfSnapshot, perf)});
  const ProgramResult result = tarnix(server, {"perf"});
  EXPECT_NE(result.output.find("142.2      142.2  Home\n"), std::string::npos) << result.output;
}

TEST(ConsoleCommand, ShowsLinesAndAsksForWhatItWasTold) {
  const auto echo = [](ScriptedPeer& peer) {
    peer.sendFullSync();
    while (const auto message = peer.receive()) {
      EXPECT_EQ(message->type, Type::commandGetWebViewConsole);
      peer.send(
          Type::responseWebViewConsole,
          encodeJson(WebViewConsoleResponse{
                         {{978'307'200.5, "error", message->payload, "https://a.example/"}}, 7})
              .value());
    }
  };
  const ScriptedServer server({echo});
  const ProgramResult result = tarnix(server, {"console", "--level", "error", "--limit", "3"});
  expectExit(ExitCode::success, result);
  EXPECT_NE(result.output.find(R"(error  {"level":"error","limit":3})"), std::string::npos)
      << result.output;
  EXPECT_NE(result.output.find("1 of 7 lines"), std::string::npos) << result.output;
  const ProgramResult json = tarnix(server, {"console", "--json"});
  EXPECT_EQ(decodeJson<WebViewConsoleResponse>(json.output).value().entries.at(0).message, "{}");
  expectExit(ExitCode::usage, tarnix(server, {"console", "--level", "loud"}));
}

TEST(ScreenCommands, SayThatAHostDoesNotAnswer) {
  const auto saysNothing = [](ScriptedPeer& peer) {
    peer.sendFullSync();
    peer.waitForEnd();
  };
  const ScriptedServer server({saysNothing});
  for (const std::vector<std::string>& command : {std::vector<std::string>{"text"},
                                                  {"find", "a"},
                                                  {"snapshot"},
                                                  {"screenshot", "-"},
                                                  {"audit"},
                                                  {"perf"}}) {
    std::vector<std::string> arguments = command;
    arguments.insert(arguments.end(), {"--timeout", "0.3"});
    const ProgramResult result = tarnix(server, arguments);
    expectExit(ExitCode::noAnswer, result);
    EXPECT_NE(result.errors.find("busy"), std::string::npos) << result.errors;
    EXPECT_EQ(result.output, "");
  }
}

}  // namespace
}  // namespace tarnix::companion
