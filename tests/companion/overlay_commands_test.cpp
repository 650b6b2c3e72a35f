#include <gtest/gtest.h>

#include <future>

#include "companion/command/exit_code.h"
#include "probe/model/overlay_command.h"
#include "tests/companion/program_run.h"
#include "tests/companion/scripted_server.h"

/// `tarnix overlay`: the real program, against a server that keeps what it is sent.
namespace tarnix::companion {
namespace {

using Type = CompanionMessageType;

struct Outcome {
  ProgramResult result;
  std::optional<CompanionMessage> message;
};

Outcome overlay(std::vector<std::string> arguments) {
  auto received = std::make_shared<std::promise<std::optional<CompanionMessage>>>();
  const ScriptedServer server({[received](ScriptedPeer& peer) {
                                 peer.sendFullSync();
                                 received->set_value(peer.receive());
                                 peer.waitForEnd();
                               },
                               [](ScriptedPeer& peer) {
                                 peer.sendFullSync();
                                 peer.waitForEnd();
                               }});
  arguments.insert(arguments.begin(), {TARNIX_PROGRAM, "overlay"});
  arguments.insert(arguments.end(), {"--port", std::to_string(server.port())});
  Outcome outcome{runProgram(arguments, {}), std::nullopt};
  std::future<std::optional<CompanionMessage>> message = received->get_future();
  if (message.wait_for(std::chrono::seconds(0)) == std::future_status::ready) {
    outcome.message = message.get();
  }
  return outcome;
}

TEST(OverlayCommand, SendsTheEffectOfItsName) {
  struct Row {
    std::vector<std::string> arguments;
    OverlayCommand command;
  };
  for (const Row& row : {
           Row{{"scan"}, {"scan", std::nullopt, std::nullopt}},
           Row{{"capture"}, {"capture", std::nullopt, std::nullopt}},
           Row{{"data"}, {"data", std::nullopt, std::nullopt}},
           Row{{"data", "cookies"}, {"data", "cookies", std::nullopt}},
           Row{{"verify"}, {"verify", std::nullopt, true}},
           Row{{"verify", "the total", "--failed"}, {"verify", "the total", false}},
           Row{{"environment", "staging"}, {"environment", "staging", std::nullopt}},
       }) {
    const Outcome outcome = overlay(row.arguments);
    EXPECT_EQ(outcome.result.exitCode(), 0) << outcome.result.errors;
    EXPECT_EQ(outcome.result.output, "");
    ASSERT_TRUE(outcome.message) << row.arguments[0];
    EXPECT_EQ(outcome.message->type, Type::commandShowOverlay);
    EXPECT_EQ(outcome.message->decode<OverlayCommand>(), row.command) << row.arguments[0];
  }
}

TEST(OverlayCommand, Hides) {
  const Outcome outcome = overlay({"hide"});
  EXPECT_EQ(outcome.result.exitCode(), 0) << outcome.result.errors;
  ASSERT_TRUE(outcome.message);
  EXPECT_EQ(outcome.message->type, Type::commandHideOverlay);
}

TEST(OverlayCommand, RefusesWhatThereIsNot) {
  for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
           {}, {"wave"}, {"scan", "detail"}, {"scan", "--failed"}, {"verify", "\xff"}}) {
    const Outcome outcome = overlay(arguments);
    EXPECT_EQ(outcome.result.exitCode(), static_cast<int>(ExitCode::usage));
    EXPECT_FALSE(outcome.message);
  }
}

TEST(OverlayCommand, SaysWhatThereIs) {
  EXPECT_EQ(runProgram({TARNIX_PROGRAM, "overlay"}, {}).errors,
            "tarnix: Say what to do: scan or capture or data or verify or environment or hide. "
            "`tarnix overlay --help` shows how it is used.\n");
  EXPECT_EQ(runProgram({TARNIX_PROGRAM, "overlay", "wave"}, {}).errors,
            "tarnix: There is no \"overlay wave\". Say scan or capture or data or verify or "
            "environment or hide. `tarnix overlay --help` shows how it is used.\n");
}

}  // namespace
}  // namespace tarnix::companion
