#include "probe/model/probe_sync_builder.h"

#include "probe/link/json_codec.h"
#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

using ProbeSyncBuilder::buildFullSync;

class ProbeSyncBuilderTest : public FakeWorldTest {};

struct AppCase {
  std::map<std::string, std::string, std::less<>> info;
  const char* appName;
  const char* appVersion;
  const char* buildNumber;
};

TEST_F(ProbeSyncBuilderTest, DescribesTheHostByWhatItSays) {
  const std::vector<AppCase> table = {
      {{}, "Unknown", "? (?)", "?"},
      {{{"CFBundleName", "Demo"}}, "Demo", "? (?)", "?"},
      {{{"CFBundleDisplayName", "Demo App"}, {"CFBundleName", "Demo"}}, "Demo App", "? (?)", "?"},
      {{{"CFBundleVersion", "7"}}, "Unknown", "? (7)", "7"},
      {{{"CFBundleShortVersionString", "2.4.1"}}, "Unknown", "2.4.1 (?)", "?"},
      {{{"CFBundleShortVersionString", "2.4.1"}, {"CFBundleVersion", "318"}},
       "Unknown",
       "2.4.1 (318)",
       "318"},
  };
  for (const AppCase& row : table) {
    world_.bundle.info = row.info;
    const OutgoingFullSync sync = buildFullSync();
    EXPECT_EQ(sync.appName, row.appName);
    EXPECT_EQ(sync.appVersion, row.appVersion);
    EXPECT_EQ(sync.qaState.buildNumber, row.buildNumber);
  }
}

TEST_F(ProbeSyncBuilderTest, HoldsWhatTheStoreHolds) {
  TransferableNetworkRequest request;
  request.url = "http://localhost/";
  TransferableLogEntry entry;
  entry.message = "hello";
  ProbeState::shared().addRequest(request);
  ProbeState::shared().addLog(entry);
  const OutgoingFullSync sync = buildFullSync();
  ASSERT_EQ(sync.httpRequests.size(), 1U);
  EXPECT_EQ(*sync.httpRequests.front(), request);
  EXPECT_EQ(sync.logEntries, std::vector{entry});
  EXPECT_EQ(sync.deviceName, "Testbench");
}

TEST_F(ProbeSyncBuilderTest, LooksAtTheSettingsAfresh) {
  world_.userDefaults.values = {{"theme", {std::string("dark")}}};
  EXPECT_EQ(buildFullSync().userDefaultsEntries,
            (std::vector<TransferableUserDefaultsEntry>{{"theme", "theme", "dark", "String"}}));
  world_.userDefaults.values.clear();
  EXPECT_TRUE(buildFullSync().userDefaultsEntries.empty());
}

TEST_F(ProbeSyncBuilderTest, NamesTheScreenOfTheTrackerAndNotOfTheStore) {
  EXPECT_EQ(buildFullSync().currentScreen, "Unknown");
  ProbeState::shared().setScreen("Store");
  ProbeScreenTracker::setLastScreenName("Tracker");
  EXPECT_EQ(buildFullSync().currentScreen, "Tracker");
  ProbeState::shared().clear();
  EXPECT_EQ(buildFullSync().currentScreen, "Tracker");
}

TEST_F(ProbeSyncBuilderTest, SendsEmptySectionsAndNoFlows) {
  EXPECT_EQ(encodeJson(buildFullSync()),
            R"({"httpRequests":[],"wsConnections":[],"logEntries":[],)"
            R"("environmentState":{"environments":[]},)"
            R"("rulesState":{"rewriteRules":[],"mockRules":[],"interceptRules":[]},)"
            R"("qaState":{"results":[],"buildNumber":"?"},)"
            R"("userDefaultsEntries":[],"keychainEntries":[],"currentScreen":"Unknown",)"
            R"json("deviceName":"Testbench","appName":"Unknown","appVersion":"? (?)"})json");
}

}  // namespace
}  // namespace tarnix::tests
