#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>

#include "probe/link/companion_framer.h"
#include "probe/link/companion_message.h"
#include "probe/model/accessibility_audit_response.h"
#include "probe/model/add_intercept_cmd.h"
#include "probe/model/add_mock_cmd.h"
#include "probe/model/find_command.h"
#include "probe/model/find_response.h"
#include "probe/model/fire_deep_link_command.h"
#include "probe/model/full_sync_payload.h"
#include "probe/model/get_console_cmd.h"
#include "probe/model/input_result.h"
#include "probe/model/overlay_command.h"
#include "probe/model/perf_snapshot_response.h"
#include "probe/model/remove_cmd.h"
#include "probe/model/screen_html_response.h"
#include "probe/model/screen_text_response.h"
#include "probe/model/screenshot_response.h"
#include "probe/model/snapshot_response.h"
#include "probe/model/swipe_command.h"
#include "probe/model/tap_command.h"
#include "probe/model/type_text_command.h"
#include "probe/model/web_view_console_response.h"
#include "tests/unit/json_edit.h"
#include "tests/unit/marked_text.h"

namespace tarnix::tests {
namespace {

/// A frame file: lines that begin with "#" are comments; "[header]" is hexadecimal, "[body]" is the
/// body broken into lines, "[payload]" what its Base64 holds (absent: nothing).
struct GoldenFrame {
  std::string header;
  std::string body;
  std::string payload;

  static GoldenFrame read(const std::filesystem::path& path) {
    std::map<std::string, std::vector<std::string>> sections;
    std::string section;
    for (const std::string& line : linesOfFile(path)) {
      const std::size_t start = line.find_first_not_of(' ');
      if (start == std::string::npos || line[start] == '#') {
        continue;
      }
      if (line == "[header]" || line == "[body]" || line == "[payload]") {
        section = line;
      } else {
        sections[section].push_back(line);
      }
    }
    return {bytesOfHex(joined(sections["[header]"])), joined(sections["[body]"]),
            joined(sections["[payload]"])};
  }
};

template <class R>
std::optional<std::string> thereAndBack(const CompanionMessage& message) {
  const std::optional<R> record = message.decode<R>();
  return record ? encodeJson(*record) : std::nullopt;
}

/// The payload after it has been a record of its type; as it is where the type has none.
std::optional<std::string> payloadThroughItsRecord(const CompanionMessage& message) {
  switch (message.type) {
    case CompanionMessageType::syncFull:
      return thereAndBack<FullSyncPayload>(message);
    case CompanionMessageType::eventHttpRequest:
      return thereAndBack<TransferableNetworkRequest>(message);
    case CompanionMessageType::eventLog:
      return thereAndBack<TransferableLogEntry>(message);
    case CompanionMessageType::responsePerfSnapshot:
      return thereAndBack<PerfSnapshotResponse>(message);
    case CompanionMessageType::responseScreenHTML:
      return thereAndBack<ScreenHTMLResponse>(message);
    case CompanionMessageType::commandFindElement:
      return thereAndBack<FindCommand>(message);
    case CompanionMessageType::responseFindElement:
      return thereAndBack<FindResponse>(message);
    case CompanionMessageType::responseScreenText:
      return thereAndBack<ScreenTextResponse>(message);
    case CompanionMessageType::responseSnapshot:
      return thereAndBack<SnapshotResponse>(message);
    case CompanionMessageType::responseScreenshot:
      return thereAndBack<ScreenshotResponse>(message);
    case CompanionMessageType::responseAccessibilityAudit:
      return thereAndBack<AccessibilityAuditResponse>(message);
    case CompanionMessageType::commandGetWebViewConsole:
      return thereAndBack<GetConsoleCmd>(message);
    case CompanionMessageType::responseWebViewConsole:
      return thereAndBack<WebViewConsoleResponse>(message);
    case CompanionMessageType::commandAddMockRule:
      return thereAndBack<AddMockCmd>(message);
    case CompanionMessageType::commandAddInterceptRule:
      return thereAndBack<AddInterceptCmd>(message);
    case CompanionMessageType::commandRemoveMockRule:
    case CompanionMessageType::commandRemoveInterceptRule:
      return thereAndBack<RemoveCmd>(message);
    case CompanionMessageType::commandFireDeepLink:
      return thereAndBack<FireDeepLinkCommand>(message);
    case CompanionMessageType::commandShowOverlay:
      return thereAndBack<OverlayCommand>(message);
    case CompanionMessageType::commandTap:
      return thereAndBack<TapCommand>(message);
    case CompanionMessageType::commandSwipe:
      return thereAndBack<SwipeCommand>(message);
    case CompanionMessageType::commandTypeText:
      return thereAndBack<TypeTextCommand>(message);
    case CompanionMessageType::responseTap:
    case CompanionMessageType::responseSwipe:
    case CompanionMessageType::responseTypeText:
      return thereAndBack<InputResult>(message);
    default:
      return message.payload;
  }
}

class GoldenFrames : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(GoldenFrames, AreReadAsWhatTheySay) {
  const GoldenFrame golden = GoldenFrame::read(GetParam());
  CompanionFramer framer;
  framer.handleInput(golden.header + golden.body);
  EXPECT_EQ(framer.nextBody(), golden.body);
  EXPECT_EQ(framer.nextBody(), std::nullopt);

  const auto message = CompanionMessage::decodeEnvelope(golden.body);
  ASSERT_TRUE(message);
  const std::string fileName = GetParam().filename();
  EXPECT_TRUE(fileName.starts_with(std::string(rawValue(message->type)) + "."));
  EXPECT_TRUE(message->payload == golden.payload || sameJson(message->payload, golden.payload))
      << message->payload;
}

TEST_P(GoldenFrames, AreWrittenAsTheyWereRead) {
  const GoldenFrame golden = GoldenFrame::read(GetParam());
  auto message = CompanionMessage::decodeEnvelope(golden.body);
  ASSERT_TRUE(message);
  const std::optional<std::string> payload = payloadThroughItsRecord(*message);
  ASSERT_TRUE(payload) << "the payload is not the record of its type";
  EXPECT_TRUE(*payload == golden.payload || sameJson(*payload, golden.payload)) << *payload;

  const std::optional<std::string> body = message->encodeEnvelope();
  ASSERT_TRUE(body);
  EXPECT_TRUE(sameJson(*body, golden.body)) << *body;
  EXPECT_EQ(CompanionFramer::handleOutput(golden.body), golden.header + golden.body);
}

std::vector<std::filesystem::path> goldenFiles() {
  std::vector<std::filesystem::path> files;
  for (const auto& entry :
       std::filesystem::directory_iterator(TARNIX_SOURCE_DIR "/tests/golden/frames")) {
    files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

TEST(GoldenFrameFiles, ThereIsOneForEachTypeThatTheProbeSendsOrTakes) {
  std::set<std::string, std::less<>> types;
  for (const std::filesystem::path& file : goldenFiles()) {
    types.insert(std::string(
        rawValue(CompanionMessage::decodeEnvelope(GoldenFrame::read(file).body).value().type)));
  }
  // Of the family's protocol, but never sent to a companion.
  const std::set<std::string, std::less<>> neverSent = {
      "event.wsConnection", "event.wsFrame",  "event.wsStatusChange",     "event.environmentChange",
      "event.rulesChange",  "event.qaUpdate", "event.userDefaultsChange", "event.keychainChange"};
  for (const CompanionMessageType type : allCompanionMessageTypes()) {
    EXPECT_NE(types.contains(rawValue(type)), neverSent.contains(rawValue(type))) << rawValue(type);
  }
}

std::string nameOf(const testing::TestParamInfo<std::filesystem::path>& parameter) {
  std::string name = parameter.param.stem();
  std::replace_if(
      name.begin(), name.end(), [](char letter) { return letter == '.' || letter == '-'; }, '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Frames, GoldenFrames, testing::ValuesIn(goldenFiles()), nameOf);

}  // namespace
}  // namespace tarnix::tests
