#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "companion/command/exit_code.h"
#include "probe/link/json_codec.h"
#include "probe/model/full_sync_payload.h"
#include "probe/model/screen_html_response.h"
#include "tests/companion/program_run.h"
#include "tests/companion/scripted_server.h"
#include "tests/companion/temporary_folder.h"

/// The real program, against a server that does as a test says.
namespace tarnix::companion {
namespace {

using Type = CompanionMessageType;

ProgramResult tarnix(std::vector<std::string> arguments, const ProgramOptions& options = {}) {
  arguments.insert(arguments.begin(), TARNIX_PROGRAM);
  return runProgram(arguments, options);
}

std::vector<std::string> at(const ScriptedServer& server, std::vector<std::string> arguments) {
  arguments.insert(arguments.end(), {"--port", std::to_string(server.port())});
  return arguments;
}

void expectExit(ExitCode code, const ProgramResult& result) {
  EXPECT_EQ(result.exitCode(), static_cast<int>(code)) << result.output << result.errors;
}

const char* const document =
    "<html><title>Unknown</title>\n<p id=1 c=\"1,2\">a\x1b[2J</p>\n</html>";

const auto answerHtml = [](ScriptedPeer& peer) {
  peer.sendFullSync();
  if (const auto command = peer.receive()) {
    EXPECT_EQ(command->type, Type::commandScreenHTML);
    peer.send(Type::responseScreenHTML,
              encodeJson(ScreenHTMLResponse{"Unknown", document, 1}).value());
  }
  peer.waitForEnd();
};

const auto saySync = [](ScriptedPeer& peer) {
  FullSyncPayload sync;
  sync.appName = "Demo\x1b[31m";
  sync.appVersion = "2.4.1 (318)";
  sync.deviceName = "bench";
  sync.currentScreen = "Unknown";
  sync.userDefaultsEntries.push_back({"a", "a", std::string(300, 'v'), "String"});
  TransferableLogEntry line;
  line.level = "WARN";
  line.category = "app";
  for (int index = 0; index < 25; ++index) {
    line.message = "line " + std::to_string(index) + ";";
    sync.logEntries.push_back(line);
  }
  peer.send(Type::syncFull, encodeJson(sync).value());
  peer.waitForEnd();
};

std::string contents(const std::filesystem::path& file) {
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  return text.str();
}

TEST(TarnixCommand, RefusesWrongUsage) {
  const std::vector<std::vector<std::string>> wrong = {
      {},
      {"frobnicate"},
      {"--frobnicate"},
      {"html", "surplus"},
      {"html", "--port", "0"},
      {"html", "--port", "65536"},
      {"html", "--port", "x"},
      {"html", "--host", "127.0.0.1"},
      {"html", "--port", "1", "--pid", "1"},
      {"html", "--port", "1", "--name", "a"},
      {"html", "--pid", "-1"},
      {"html", "--timeout", "0"},
      {"html", "--timeout", "nan"},
      {"html", "--timeout", "-1"},
      {"run"},
      {"run", "--frobnicate", "true"},
      {"run", "--timeout"},
      {"list", "--port", "1"},
  };
  for (const auto& arguments : wrong) {
    const ProgramResult result = tarnix(arguments);
    expectExit(ExitCode::usage, result);
    EXPECT_TRUE(result.output.empty()) << result.output;
    EXPECT_NE(result.errors.find("--help"), std::string::npos) << result.errors;
  }
}

TEST(TarnixCommand, RefusesRulesThatWouldNeverFit) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> refused = {
      {{"mock", "add", "(", "--match", "regex"}, "\"(\" is no regular expression: character 1"},
      {{"intercept", "add", "[a", "--match", "regex"}, "\"[a\" is no regular expression"},
      {{"mock", "add", ""}, "PATTERN is empty. For every request give \"://\"."},
      {{"mock", "add", "/cart", "--method", "G T"}, "\"G T\" is no method."},
  };
  for (const auto& [arguments, explanation] : refused) {
    const ProgramResult result = tarnix(arguments);
    expectExit(ExitCode::usage, result);
    EXPECT_NE(result.errors.find(explanation), std::string::npos) << result.errors;
  }
}

TEST(TarnixCommand, SaysWhatIsWrongWithACommandLine) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> explained = {
      {{"--pid", "3", "html"},
       "The option --pid stands behind the command. `tarnix html --help` shows"},
      {{"--frobnicate"}, "There is no option \"--frobnicate\"."},
      {{"frobnicate"}, "There is no command \"frobnicate\"."},
      {{"html", "--pid", "abc"}, "--pid: Value abc not in range 1 to 2147483647."},
      {{}, "Say what to do."},
      {{"mock"}, "Say what to do: add or remove. `tarnix mock --help` shows"},
      {{"mock", "list"},
       "There is no \"mock list\". Say add or remove. `tarnix mock --help` shows"},
      {{"intercept", "--list"}, "The option --list stands behind add or remove. `tarnix interc"},
      {{"mock", "add"}, "PATTERN is required. `tarnix mock add --help` shows"},
      {{"wait", "--txt", "x"}, "There is no option \"--txt\" here. `tarnix wait --help` shows"},
      {{"tap", "--txt", "Save"}, "There is no option \"--txt\" here."},
      {{"mock", "add", "--frobnicate"}, "There is no option \"--frobnicate\" here."},
      {{"tap", "1", "2", "-3"}, "\"-3\" is one word too many."},
      {{"html", "one", "two"}, "\"one\" is one word too many. `tarnix html --help` shows"},
      {{"tap", "99999999999999999999", "1"},
       "X: 99999999999999999999 is farther than any screen reaches."},
      {{"swipe", "1", "2", "3", "-99999999999999999999"},
       "Y2: -99999999999999999999 is farther than any screen reaches."},
      {{"tap", "12.5", "1"}, "X: \"12.5\" is no whole number."},
      {{"mock", "add", "/cart", "--status", "4040"},
       "--status: Value 4040 not in range 100 to 999."},
  };
  for (const auto& [arguments, explanation] : explained) {
    const ProgramResult result = tarnix(arguments);
    EXPECT_NE(result.errors.find(explanation), std::string::npos) << result.errors;
  }
}

TEST(TarnixCommand, DocumentsItsExitCodes) {
  const ProgramResult result = tarnix({"--help"});
  expectExit(ExitCode::success, result);
  EXPECT_NE(result.output.find(exitCodeHelp), std::string::npos) << result.output;
  expectExit(ExitCode::success, tarnix({"--version"}));
  for (const char* command : {"run", "list", "sync", "html"}) {
    expectExit(ExitCode::success, tarnix({command, "--help"}));
  }
}

TEST(TarnixCommand, HandsTheDocumentOnByteForByte) {
  ScriptedServer server({answerHtml});
  const ProgramResult result = tarnix(at(server, {"html"}));
  expectExit(ExitCode::success, result);
  EXPECT_EQ(result.output, document);
  EXPECT_EQ(result.errors, "");
}

TEST(TarnixCommand, TakesAnAddressAsURLsHaveIt) {
  const ScriptedServer server({answerHtml});
  const ProgramResult result = tarnix(at(server, {"html", "--host", "[127.0.0.1]"}));
  expectExit(ExitCode::success, result);
  const ProgramResult away = tarnix({"html", "--host", "[::1]", "--port", "1"});
  EXPECT_NE(away.errors.find("nothing listens on port 1 of ::1."), std::string::npos)
      << away.errors;
}

TEST(TarnixCommand, KeepsADocumentFromDrawingOnTheTerminal) {
  ScriptedServer server({answerHtml});
  const ProgramResult result = tarnix(at(server, {"html"}), {{}, 80});
  expectExit(ExitCode::success, result);
  EXPECT_EQ(result.output.find('\x1b'), std::string::npos);
  EXPECT_NE(result.output.find("a\\x1B[2J</p>\r\n"), std::string::npos) << result.output;
}

TEST(TarnixCommand, WritesTheDocumentIntoAFile) {
  ScriptedServer server({answerHtml});
  const TemporaryFolder folder;
  const auto file = folder / "screen.html";
  const ProgramResult result = tarnix(at(server, {"html", "-o", file.string()}));
  expectExit(ExitCode::success, result);
  EXPECT_EQ(contents(file), document);
  EXPECT_NE(result.output.find("1 elements"), std::string::npos) << result.output;

  const ProgramResult failed = tarnix(at(server, {"html", "-o", (folder / "no/file").string()}));
  expectExit(ExitCode::failure, failed);
  EXPECT_NE(failed.errors.find("No such file"), std::string::npos) << failed.errors;
}

TEST(TarnixCommand, PrintsTheAnswerAsJson) {
  ScriptedServer server({answerHtml});
  const ProgramResult result = tarnix(at(server, {"html", "--json"}));
  expectExit(ExitCode::success, result);
  const auto screen = decodeJson<ScreenHTMLResponse>(result.output);
  ASSERT_TRUE(screen) << result.output;
  EXPECT_EQ(screen->html, document);
  EXPECT_EQ(screen->elementCount, 1);
}

TEST(TarnixCommand, ShowsTheFullSync) {
  ScriptedServer server({saySync});
  const ProgramResult result = tarnix(at(server, {"sync"}));
  expectExit(ExitCode::success, result);
  for (const char* text : {"Demo\\x1B[31m 2.4.1 (318)\n", "device  bench", "Settings (1)",
                           "Requests (0)", "Log (25), the newest 20", "line 24;", "line 5;"}) {
    EXPECT_NE(result.output.find(text), std::string::npos) << text << "\n" << result.output;
  }
  EXPECT_EQ(result.output.find("line 4;"), std::string::npos);
  EXPECT_NE(tarnix(at(server, {"sync", "--all"})).output.find("line 4;"), std::string::npos);
}

TEST(TarnixCommand, PrintsTheFullSyncAsJson) {
  ScriptedServer server({saySync});
  const ProgramResult result = tarnix(at(server, {"sync", "--json"}));
  const auto sync = decodeJson<FullSyncPayload>(result.output);
  ASSERT_TRUE(sync) << result.output;
  EXPECT_EQ(sync->logEntries.size(), 25U);
}

TEST(TarnixCommand, UsesColoursAndWidthOfATerminalOnly) {
  ScriptedServer server({saySync});
  const auto isColoured = [](const ProgramResult& result) {
    return result.output.find("\x1b[") != std::string::npos;
  };
  const std::vector<std::string> arguments = at(server, {"sync"});
  const ProgramResult onTerminal = tarnix(arguments, {{{"TERM", "xterm"}, {"NO_COLOR", ""}}, 60});
  EXPECT_TRUE(isColoured(onTerminal));
  EXPECT_NE(onTerminal.output.find("vvv…"), std::string::npos) << onTerminal.output;
  EXPECT_FALSE(isColoured(tarnix(arguments)));
  EXPECT_FALSE(isColoured(tarnix(arguments, {{{"TERM", "xterm"}, {"NO_COLOR", "1"}}, 60})));
  EXPECT_FALSE(isColoured(tarnix(arguments, {{{"TERM", "dumb"}}, 60})));
  EXPECT_FALSE(isColoured(tarnix(at(server, {"sync", "--no-color"}), {{{"TERM", "xterm"}}, 60})));
}

TEST(TarnixCommand, EndsAsItsFailureIs) {
  struct Case {
    const char* name;
    ScriptedServer::Script script;
    ExitCode code;
  };
  const Case cases[] = {
      {"dropped", [](ScriptedPeer&) {}, ExitCode::connectionFailed},
      {"silent", [](ScriptedPeer& peer) { peer.waitForEnd(); }, ExitCode::noAnswer},
      {"no answer",
       [](ScriptedPeer& peer) {
         peer.sendFullSync();
         peer.waitForEnd();
       },
       ExitCode::noAnswer},
      {"a stranger", [](ScriptedPeer& peer) { peer.sendBody("hello"); }, ExitCode::notUnderstood},
      {"another answer",
       [](ScriptedPeer& peer) {
         peer.sendFullSync();
         peer.receive();
         peer.send(Type::responseScreenHTML, R"({"screen":7})");
         peer.waitForEnd();
       },
       ExitCode::notUnderstood},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.name);
    ScriptedServer server({test.script});
    // Only what is to run out of time is given little of it.
    const char* const timeout = test.code == ExitCode::noAnswer ? "0.5" : "30";
    const ProgramResult result = tarnix(at(server, {"html", "--timeout", timeout}));
    expectExit(test.code, result);
    EXPECT_TRUE(result.output.empty()) << result.output;
    EXPECT_EQ(result.errors.rfind("tarnix: ", 0), 0U) << result.errors;
  }
}

TEST(TarnixCommand, SaysWhatToDoWhenNothingIsThere) {
  std::uint16_t port = 0;
  {
    const ScriptedServer server({answerHtml});
    port = server.port();
  }
  const ProgramResult refused = tarnix({"html", "--port", std::to_string(port)});
  expectExit(ExitCode::connectionFailed, refused);
  EXPECT_NE(refused.errors.find("tarnix run"), std::string::npos) << refused.errors;

  const ProgramResult none = tarnix({"html", "--pid", std::to_string(getpid())});
  expectExit(ExitCode::noHost, none);
  EXPECT_NE(none.errors.find("tarnix list"), std::string::npos) << none.errors;
}

TEST(TarnixCommand, ReportsThatItsOutputCannotBeWritten) {
  ScriptedServer server({answerHtml});
  const ProgramResult result = runProgram(
      {"/bin/sh", "-c",
       "exec " TARNIX_PROGRAM " html --port " + std::to_string(server.port()) + " > /dev/full"});
  expectExit(ExitCode::failure, result);
  EXPECT_NE(result.errors.find("cannot be written"), std::string::npos) << result.errors;
}

}  // namespace
}  // namespace tarnix::companion
