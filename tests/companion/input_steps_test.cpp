#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <fstream>

#include "companion/command/exit_code.h"
#include "companion/command/screen_elements.h"
#include "companion/command/step_file.h"
#include "probe/link/json_codec.h"
#include "probe/model/input_result.h"
#include "probe/model/overlay_command.h"
#include "probe/model/screen_html_response.h"
#include "tests/companion/program_run.h"
#include "tests/companion/scripted_server.h"
#include "tests/companion/temporary_folder.h"

namespace tarnix::companion {
namespace {

using Type = CompanionMessageType;

constexpr const char* document =
    "<html><title>Home</title>\n"
    "<button id=1 c=\"10,20\">Save</button>\n"
    "<button id=2 c=\"30,-4\" v=\"1\">Save as &lt;x&gt; &amp;amp; \"</button>\n"
    "<input id=3 c=\"5,6\" v=\"Ada\" placeholder=\"Name &quot;y&quot;\">\n"
    "<input type=range id=4 c=\"7,8\" v=\"0.5\" label=\"Loud\">\n"
    "<img id=5 c=\"9,9\" alt=\"Logo\">\n"
    "<p id=6 c=\"1,2\">two\nlines</p>\n"
    "</html>";

TEST(ScreenElements, AreReadFromTheDocument) {
  EXPECT_EQ(elementsIn(document), (std::vector<ScreenElement>{{"Save", "", 10, 20},
                                                              {"Save as <x> &amp; \"", "1", 30, -4},
                                                              {"Name \"y\"", "Ada", 5, 6},
                                                              {"Loud", "0.5", 7, 8},
                                                              {"Logo", "", 9, 9},
                                                              {"two\nlines", "", 1, 2}}));
  EXPECT_TRUE(elementsIn("").empty());
  EXPECT_TRUE(elementsIn("<p id=1>no point</p>\n<p c=\"1\">x</p>\n<p c=\"a,b\">x</p>\n<").empty());
}

TEST(ScreenElements, AreChosenByTheirLabel) {
  const auto choose = [](const std::string& text) {
    return elementLabelled(elementsIn(document), text);
  };
  EXPECT_EQ(std::get<ScreenElement>(choose("Save")).x, 10) << "the one that is exactly so";
  EXPECT_EQ(std::get<ScreenElement>(choose("Log")).x, 9) << "the one that contains it";
  EXPECT_EQ(std::get<std::string>(choose("Quit")),
            "nothing on the screen is labelled \"Quit\". `tarnix html` shows what is.");
  EXPECT_EQ(std::get<std::string>(choose("Lo")),
            "2 elements are labelled \"Lo\": \"Loud\" at 7,8; \"Logo\" at 9,9. Tap one of these "
            "points.");
}

TEST(ScreenElements, ShowTextsInLabelsAndValues) {
  EXPECT_TRUE(showsText(elementsIn(document), "Ada"));
  EXPECT_TRUE(showsText(elementsIn(document), "oud"));
  EXPECT_FALSE(showsText(elementsIn(document), "input"));
}

std::vector<std::string> described(const std::string& yaml) {
  const auto steps = stepsIn(yaml);
  if (const std::string* const reason = std::get_if<std::string>(&steps)) {
    return {*reason};
  }
  std::vector<std::string> result;
  for (const Step& step : std::get<0>(steps)) {
    result.push_back(describe(step));
  }
  return result;
}

TEST(StepFile, IsAListOfSteps) {
  EXPECT_EQ(
      described("- tap: New\n"
                "- tap: [297, -3]\n"
                "- tap: \"7\"\n"
                "- swipe: [1, 2, 3, 4]\n"
                "- type: héllo\n"
                "- wait: {text: Ready, gone: Busy, screen: Home, within: 2.5}\n"
                "- pause: 0.5\n"),
      (std::vector<std::string>{
          "tap \"New\"", "tap 297,-3", "tap \"7\"", "swipe 1,2 to 3,4", "type \"héllo\"",
          "wait for \"Ready\" until \"Busy\" is gone for the screen \"Home\"", "pause 0.5 s"}));
  EXPECT_TRUE(described("[]").empty());
}

TEST(StepFile, SaysWhatIsWrongAndWhere) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"", "it is not a list of steps, each beginning with a dash"},
      {"tap: New", "it is not a list of steps, each beginning with a dash"},
      {"- tap: New\n- tap: [1]",
       "line 2: what is tapped, unless a label, is a list of 2 whole numbers"},
      {"- tap: [1, x]", "line 1: what is tapped, unless a label, is made of whole numbers"},
      {"- tap: {x: 1, y: 2}",
       "line 1: what is tapped, unless a label, is a list of 2 whole numbers"},
      {"- tap:", "line 1: what is tapped, unless a label, is a list of 2 whole numbers"},
      {"- swipe: {x1: 1}", "line 1: a swipe, X1 Y1 X2 Y2, is a list of 4 whole numbers"},
      {"- shake: 1", "line 1: there is no step \"shake\""},
      {"- tap", "line 1: a step is one of tap, swipe, type, wait and pause, with a colon"},
      {"- tap: a\n  type: b",
       "line 1: a step has one key; each step begins with a dash of its own"},
      {"- wait: {}", "line 1: a wait says what for: text, gone or screen"},
      {"- wait: {text: a, until: b}", "line 1: a wait has no \"until\""},
      {"- pause: -1", "line 1: a pause is a number of seconds, at most an hour"},
      {"- pause: .nan", "line 1: a pause is a number of seconds, at most an hour"},
      {"- type: [a]", "line 1: what is typed is a text"}};
  for (const auto& [yaml, reason] : cases) {
    EXPECT_EQ(described(yaml), std::vector<std::string>{reason}) << yaml;
  }
  EXPECT_NE(described("- [").at(0).find("line "), std::string::npos);
}

/// A host that shows the document and answers what acts on it with `success`.
ScriptedServer::Script host(bool success) {
  return [success](ScriptedPeer& peer) {
    peer.sendFullSync();
    while (const auto message = peer.receive()) {
      const std::string echo = encodeJson(InputResult{success, message->payload}).value();
      switch (message->type) {
        case Type::commandPerfSnapshot:
          peer.send(Type::responsePerfSnapshot, "{}");
          break;
        case Type::commandScreenHTML:
          peer.send(Type::responseScreenHTML,
                    encodeJson(ScreenHTMLResponse{"Home", document, 6}).value());
          break;
        case Type::commandTap:
          peer.send(Type::responseTap, echo);
          break;
        case Type::commandSwipe:
          peer.send(Type::responseSwipe, echo);
          break;
        case Type::commandTypeText:
          peer.send(Type::responseTypeText, echo);
          break;
        default:
          break;
      }
    }
  };
}

ProgramResult act(const ScriptedServer& server, std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), TARNIX_PROGRAM);
  arguments.insert(arguments.end(), {"--port", std::to_string(server.port())});
  return runProgram(arguments, {});
}

TEST(InputCommands, SendWhatIsAskedForAndTellTheAnswer) {
  const ScriptedServer server({host(true)});
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      {{"tap", "12", "-7"}, R"({"x":12,"y":-7})"},
      {{"tap", "--text", "Loud"}, R"({"x":7,"y":8})"},
      {{"swipe", "1", "2", "3", "-4"}, R"({"x1":1,"y1":2,"x2":3,"y2":-4})"},
      {{"type", "héllo 👩‍🚀"}, R"({"text":"héllo 👩‍🚀"})"}};
  for (const auto& [arguments, payload] : cases) {
    const ProgramResult result = act(server, arguments);
    EXPECT_EQ(result.exitCode(), 0) << result.errors;
    EXPECT_EQ(result.output, payload + "\n");
  }
}

TEST(InputCommands, SayWhatLiesWhereALabelledElementIs) {
  const ScriptedServer server({[](ScriptedPeer& peer) {
    peer.sendFullSync();
    while (const auto message = peer.receive()) {
      if (message->type == Type::commandScreenHTML) {
        peer.send(Type::responseScreenHTML,
                  encodeJson(ScreenHTMLResponse{"Home", document, 6}).value());
      } else if (message->type == Type::commandTap) {
        peer.send(Type::responseTap, encodeJson(InputResult{true, "Tapped control: Save"}).value());
      }
    }
  }});
  EXPECT_EQ(act(server, {"tap", "--text", "Loud"}).output,
            "Tapped control: Save, at the place of \"Loud\"\n");
  EXPECT_EQ(act(server, {"tap", "--text", "Save"}).output, "Tapped control: Save\n");
}

TEST(InputCommands, SayWhereToLookWhenThereIsNothingAtAPoint) {
  const ScriptedServer server({[](ScriptedPeer& peer) {
    peer.sendFullSync();
    while (const auto message = peer.receive()) {
      if (message->type == Type::commandTap) {
        peer.send(Type::responseTap, encodeJson(InputResult{false, "No view at (9000,1)"}).value());
      } else {
        peer.send(Type::responsePerfSnapshot, "{}");
      }
    }
  }});
  const ProgramResult result = act(server, {"tap", "9000", "1"});
  EXPECT_EQ(result.exitCode(), static_cast<int>(ExitCode::negative));
  EXPECT_EQ(result.errors,
            "tarnix: No view at (9000,1). `tarnix html` shows what there is, and where.\n");
}

TEST(InputCommands, FailWithTheReasonOfTheHost) {
  const ScriptedServer server({host(false)});
  const ProgramResult result = act(server, {"tap", "1", "2"});
  EXPECT_EQ(result.exitCode(), static_cast<int>(ExitCode::negative));
  EXPECT_EQ(result.errors, "tarnix: {\"x\":1,\"y\":2}\n");
  EXPECT_EQ(act(server, {"tap", "--text", "Quit"}).exitCode(),
            static_cast<int>(ExitCode::negative));
}

TEST(InputCommands, WaitForWhatTheScreenShows) {
  const ScriptedServer server({host(true)});
  EXPECT_EQ(act(server, {"wait", "--text", "Ada", "--gone", "Bob", "--screen", "Home"}).exitCode(),
            0);
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"--text", "Bob"}, {"--gone", "Ada"}, {"--screen", "Away"}}) {
    std::vector<std::string> all = {"wait", "--timeout", "2"};
    all.insert(all.end(), arguments.begin(), arguments.end());
    const ProgramResult result = act(server, all);
    EXPECT_EQ(result.exitCode(), static_cast<int>(ExitCode::negative)) << result.errors;
    EXPECT_NE(result.errors.find("within 2 s"), std::string::npos) << result.errors;
  }
}

TEST(InputCommands, LookLessOftenAtWhatIsWaitedForLong) {
  std::vector<std::chrono::steady_clock::time_point> looks;
  {
    const ScriptedServer server({[&looks](ScriptedPeer& peer) {
      peer.sendFullSync();
      while (const auto message = peer.receive()) {
        looks.push_back(std::chrono::steady_clock::now());
        peer.send(Type::responseScreenHTML,
                  encodeJson(ScreenHTMLResponse{"Home", document, 6}).value());
      }
    }});
    EXPECT_EQ(act(server, {"wait", "--text", "Bob", "--timeout", "6"}).exitCode(),
              static_cast<int>(ExitCode::negative));
  }
  const auto looksFrom = [&](double begin, double end) {
    return std::count_if(looks.begin(), looks.end(), [&](const auto& look) {
      const double time = std::chrono::duration<double>(look - looks.front()).count();
      return time >= begin && time < end;
    });
  };
  ASSERT_FALSE(looks.empty());
  EXPECT_LE(looksFrom(0, 1), 11) << "one in a tenth of a second";
  EXPECT_LE(looksFrom(4, 5.5), 3) << "one a second";
  EXPECT_GE(looksFrom(4, 6), 1);
}

TEST(InputCommands, SayThatAHostIsBusy) {
  const ScriptedServer server({[](ScriptedPeer& peer) {
    peer.sendFullSync();
    peer.waitForEnd();
  }});
  const ProgramResult result = act(server, {"tap", "1", "2", "--timeout", "0.5"});
  EXPECT_EQ(result.exitCode(), static_cast<int>(ExitCode::noAnswer));
  EXPECT_NE(result.errors.find("busy"), std::string::npos) << result.errors;
}

TEST(InputCommands, DoWhatAFileSaysUntilAStepFails) {
  const TemporaryFolder folder;
  const std::string file = (folder / "steps.yaml").string();
  std::ofstream(file) << "- tap: Save\n- type: a\n- tap: Quit\n- tap: [1, 1]\n";
  const ScriptedServer server({host(true)});
  const ProgramResult result = act(server, {"do", file});
  EXPECT_EQ(result.exitCode(), static_cast<int>(ExitCode::negative));
  EXPECT_EQ(result.output,
            "ok     tap \"Save\": {\"x\":10,\"y\":20}\n"
            "ok     type \"a\": {\"text\":\"a\"}\n"
            "failed tap \"Quit\": nothing on the screen is labelled \"Quit\". `tarnix html` shows "
            "what is.\n");
  EXPECT_EQ(server.connectionCount(), 1);
  const ProgramResult json = act(server, {"do", file, "--json"});
  EXPECT_TRUE(json.output.starts_with(R"({"step":"tap \"Save\"","success":true,"message":)"))
      << json.output;
}

TEST(InputCommands, ShowOverTheHostWhetherAWaitPassed) {
  const TemporaryFolder folder;
  const std::string file = (folder / "steps.yaml").string();
  std::ofstream(file) << "- wait: {text: Ada}\n- wait: {text: Bob, within: 1}\n";
  std::vector<OverlayCommand> shown;
  {
    const ScriptedServer server({[&shown](ScriptedPeer& peer) {
      peer.sendFullSync();
      while (const auto message = peer.receive()) {
        if (message->type == CompanionMessageType::commandShowOverlay) {
          shown.push_back(message->decode<OverlayCommand>().value());
        } else {
          peer.send(CompanionMessageType::responseScreenHTML,
                    encodeJson(ScreenHTMLResponse{"Home", document, 6}).value());
        }
      }
    }});
    EXPECT_EQ(act(server, {"do", file}).exitCode(), static_cast<int>(ExitCode::negative));
  }
  EXPECT_EQ(shown, (std::vector<OverlayCommand>{{"verify", "wait for \"Ada\"", true},
                                                {"verify", "wait for \"Bob\"", false}}));
}

TEST(InputCommands, RefuseFilesThatCannotBeUsed) {
  const TemporaryFolder folder;
  const std::string file = (folder / "steps.yaml").string();
  const ScriptedServer server({host(true)});
  EXPECT_EQ(act(server, {"do", file}).exitCode(), static_cast<int>(ExitCode::failure));
  std::ofstream(file) << "- jump: 1\n";
  const ProgramResult result = act(server, {"do", file});
  EXPECT_EQ(result.exitCode(), static_cast<int>(ExitCode::usage));
  EXPECT_NE(result.errors.find("line 1: there is no step \"jump\""), std::string::npos);
  EXPECT_EQ(server.connectionCount(), 0);
  for (const std::vector<std::string>& arguments : {std::vector<std::string>{"tap"},
                                                    {"tap", "1"},
                                                    {"tap", "--text", ""},
                                                    {"tap", "1", "2", "--text", "a"},
                                                    {"swipe", "1", "2", "3"},
                                                    {"wait"},
                                                    {"type"}}) {
    EXPECT_EQ(act(server, arguments).exitCode(), static_cast<int>(ExitCode::usage));
  }
}

}  // namespace
}  // namespace tarnix::companion
