#include "companion/discovery/host_target.h"

#include <gtest/gtest.h>

namespace tarnix::companion {

// Found by GoogleTest when it prints a target.
void PrintTo(const HostTarget& target, std::ostream* stream) {
  *stream << target.application << "/" << target.serviceName << "/" << target.pid.value_or(0) << "/"
          << target.port;
}

namespace {

TEST(MergeTargets, MatchesAnnouncementsWithProcesses) {
  const std::vector<ProbedProcess> processes = {{20, "qml", {500}}, {10, "pentobi", {400}}};
  const std::vector<AnnouncedService> services = {{"desk", 500}, {"desk #2", 400}};
  EXPECT_EQ(mergeTargets(processes, services),
            (std::vector<HostTarget>{{"pentobi", "desk #2", 10, 400}, {"qml", "desk", 20, 500}}));
}

TEST(MergeTargets, KeepsWhatOnlyOneOfThemKnows) {
  EXPECT_EQ(mergeTargets({{10, "pentobi", {400}}}, {{"desk", 500}}),
            (std::vector<HostTarget>{{"", "desk", std::nullopt, 500}, {"pentobi", "", 10, 400}}));
}

TEST(MergeTargets, HasNothingOfAProcessThatDoesNotListen) {
  EXPECT_TRUE(mergeTargets({{10, "pentobi", {}}}, {}).empty());
}

TEST(MergeTargets, LetsTheAnnouncementSettleWhichPortIsTheProbes) {
  EXPECT_EQ(mergeTargets({{10, "pentobi", {400, 401}}}, {{"desk", 401}}),
            (std::vector<HostTarget>{{"pentobi", "desk", 10, 401}}));
  EXPECT_EQ(mergeTargets({{10, "pentobi", {400, 401}}}, {}).size(), 2U);
}

TEST(MatchingTargets, FitsAllThatIsGiven) {
  const HostTarget pentobi{"pentobi", "desk", 10, 400};
  const HostTarget second{"pentobi-qml", "desk #2", 11, 401};
  const HostTarget unseen{"", "elsewhere", std::nullopt, 402};
  const auto match = [&](std::optional<pid_t> pid, std::optional<std::string> name) {
    return matchingTargets({pentobi, second, unseen}, HostChoice{pid, std::move(name)});
  };
  using Targets = std::vector<HostTarget>;
  EXPECT_EQ(match({}, {}), (Targets{pentobi, second, unseen}));
  EXPECT_EQ(match(10, {}), (Targets{pentobi}));
  EXPECT_EQ(match(12, {}), (Targets{}));
  EXPECT_EQ(match({}, "pentobi"), (Targets{pentobi})) << "a whole name beats a part";
  EXPECT_EQ(match({}, "PENTO"), (Targets{pentobi, second}));
  EXPECT_EQ(match({}, "desk #2"), (Targets{second}));
  EXPECT_EQ(match({}, "where"), (Targets{unseen}));
  EXPECT_EQ(match(10, "pentobi-qml"), (Targets{}));
  EXPECT_EQ(match({}, "nothing"), (Targets{}));
}

}  // namespace
}  // namespace tarnix::companion
