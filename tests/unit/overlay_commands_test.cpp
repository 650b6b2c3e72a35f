#include "probe/commands/overlay_commands.h"

#include "probe/commands/probe_command_handler.h"
#include "tests/unit/overlay_world.h"

namespace tarnix::tests {
namespace {

using namespace std::chrono_literals;

class OverlayCommandsTest : public OverlayTest {
 protected:
  OverlayCommandsTest() { ProbeTouchOverlay::detail::overlayWindow(); }

  std::string linesOf(std::string payload) {
    fakes::FakeServices::shared().reset();
    ProbeCommandHandler::handle({CompanionMessageType::commandShowOverlay, std::move(payload), {}});
    return standardError();
  }

  static std::string orbText() {
    const auto& shown = ProbeTouchOverlay::detail::state().orb;
    return shown == nullptr ? "no orb" : shown->textLabel().text;
  }
};

TEST_F(OverlayCommandsTest, ShowsTheEffectOfItsCategory) {
  struct Row {
    const char* payload;
    const char* lines;
    const char* orb;
  };
  for (const Row& row : {
           Row{R"({"category":"scan"})",
               "[TarnixProbe] handleShowOverlay: scan / -\n"
               "[TarnixProbe] TouchOverlay: showScan\n",
               "screen"},
           Row{R"({"category":"capture","detail":"x"})",
               "[TarnixProbe] handleShowOverlay: capture / x\n"
               "[TarnixProbe] TouchOverlay: showCaptureFlash\n",
               "screenshot"},
           Row{R"({"category":"data"})",
               "[TarnixProbe] handleShowOverlay: data / -\n"
               "[TarnixProbe] TouchOverlay: showDataPulse — data\n",
               "data"},
           Row{R"({"category":"data","detail":"cookies"})",
               "[TarnixProbe] handleShowOverlay: data / cookies\n"
               "[TarnixProbe] TouchOverlay: showDataPulse — cookies\n",
               "cookies"},
           Row{R"({"category":"verify"})",
               "[TarnixProbe] handleShowOverlay: verify / -\n"
               "[TarnixProbe] TouchOverlay: showVerify — PASS \n",
               "PASS"},
           Row{R"({"category":"verify","detail":"total","passed":false})",
               "[TarnixProbe] handleShowOverlay: verify / total\n"
               "[TarnixProbe] TouchOverlay: showVerify — FAIL total\n",
               "FAIL"},
           Row{R"({"category":"environment","detail":null})",
               "[TarnixProbe] handleShowOverlay: environment / -\n"
               "[TarnixProbe] TouchOverlay: showEnvSwitch — env\n",
               "env"},
           Row{R"({"category":"environment","detail":"staging"})",
               "[TarnixProbe] handleShowOverlay: environment / staging\n"
               "[TarnixProbe] TouchOverlay: showEnvSwitch — staging\n",
               "staging"},
           Row{R"({"category":"thinking","detail":"hm"})",
               "[TarnixProbe] handleShowOverlay: thinking / hm\n", "hm"},
       }) {
    EXPECT_EQ(linesOf(row.payload), row.lines);
    EXPECT_EQ(orbText(), row.orb) << row.payload;
  }
}

TEST_F(OverlayCommandsTest, ShowsNothingForAnUnknownCategoryWithoutADetail) {
  EXPECT_EQ(linesOf(R"({"category":"Scan"})"), "[TarnixProbe] handleShowOverlay: Scan / -\n");
  EXPECT_EQ(orbText(), "no orb");
  EXPECT_TRUE(effectLayers().empty());
}

TEST_F(OverlayCommandsTest, ShowsAnUnknownCategoryInTheColourOfReading) {
  linesOf(R"({"category":"thinking","detail":"hm"})");
  EXPECT_EQ(orb().iconLabel().text, "≡");
}

TEST_F(OverlayCommandsTest, SaysWhatItDoesNotUnderstand) {
  for (const char* payload : {"", "{}", "null", R"({"category":7})", R"({"category":null})",
                              R"({"category":"verify","passed":"yes"})"}) {
    EXPECT_EQ(linesOf(payload), "[TarnixProbe] handleShowOverlay: decode failed\n") << payload;
  }
  EXPECT_EQ(orbText(), "no orb");
}

TEST_F(OverlayCommandsTest, HidesTheOrbWhateverThePayload) {
  linesOf(R"({"category":"environment"})");
  frameAt(0);
  fakes::FakeServices::shared().reset();
  ProbeCommandHandler::handle({CompanionMessageType::commandHideOverlay, "no JSON", {}});
  framesFrom(0, 1);
  EXPECT_EQ(orbOpacity(), 0);
  EXPECT_EQ(standardError(), "");
  expectRest();
}

TEST_F(OverlayCommandsTest, QuestionsAboutTheScreenShowTheirEffects) {
  ProbeServer::setShared(std::make_shared<ProbeServer>(std::span<const CaptureInstaller>()));
  fakes::FakeServices::shared().reset();
  ProbeCommandHandler::handle({CompanionMessageType::commandScreenHTML, "", {}});
  EXPECT_EQ(orbText(), "screen");
  EXPECT_EQ(effectLayers().size(), 3U);
  ProbeCommandHandler::handle({CompanionMessageType::commandPerfSnapshot, "", {}});
  EXPECT_EQ(orbText(), "perf");
  EXPECT_EQ(effectLayers().size(), 6U);
  EXPECT_EQ(standardError(),
            "[TarnixProbe] TouchOverlay: showScan\n"
            "[TarnixProbe] TouchOverlay: showDataPulse — perf\n");
  ProbeServer::setShared(nullptr);
}

}  // namespace
}  // namespace tarnix::tests
