#include "companion/command/command_line.h"

#include <gtest/gtest.h>

#include "companion/command/probe_library.h"

namespace tarnix::companion {
namespace {

using Words = std::vector<std::string>;

TEST(SplitCommandLine, LeavesTheApplicationsArgumentsAlone) {
  struct Case {
    Words arguments;
    Words own;
    Words application;
  };
  const Case cases[] = {
      {{"tarnix"}, {}, {}},
      {{"tarnix", "html", "--port", "5"}, {"html", "--port", "5"}, {}},
      {{"tarnix", "run"}, {"run"}, {}},
      {{"tarnix", "run", "app"}, {"run"}, {"app"}},
      {{"tarnix", "run", "app", "--json", "--", "-x"}, {"run"}, {"app", "--json", "--", "-x"}},
      {{"tarnix", "run", "--", "-app", "--"}, {"run"}, {"-app", "--"}},
      {{"tarnix", "run", "--json", "app", "run"}, {"run", "--json"}, {"app", "run"}},
      {{"tarnix", "run", "--timeout", "3", "app"}, {"run", "--timeout", "3"}, {"app"}},
      {{"tarnix", "run", "--timeout=3", "app"}, {"run", "--timeout=3"}, {"app"}},
      {{"tarnix", "run", "--timeout"}, {"run", "--timeout"}, {}},
      {{"tarnix", "run", "--help"}, {"run", "--help"}, {}},
      {{"tarnix", "run", "-"}, {"run"}, {"-"}},
      {{"tarnix", "run", "--", ""}, {"run"}, {""}},
  };
  for (const Case& test : cases) {
    const CommandLine line = splitCommandLine(test.arguments);
    EXPECT_EQ(line.own, test.own);
    EXPECT_EQ(line.application, test.application);
  }
}

TEST(ProbeLibrary, IsLookedForBesideTheProgramFirst) {
  const auto candidates = probeLibraryCandidates("/opt/tarnix/bin/tarnix");
  ASSERT_GE(candidates.size(), 2U);
  EXPECT_EQ(candidates[0], "/opt/tarnix/lib/libtarnixprobe.so");
  EXPECT_EQ(candidates[1], "/opt/tarnix/lib/tarnix/libtarnixprobe.so");
}

TEST(ProbeLibrary, IsPreloadedBeforeWhatIsPreloadedAlready) {
  EXPECT_EQ(withPreloadedLibrary({"A=1"}, "/l.so"), (Words{"A=1", "LD_PRELOAD=/l.so"}));
  EXPECT_EQ(withPreloadedLibrary({"LD_PRELOAD=/a.so /b.so", "A=1"}, "/l.so"),
            (Words{"LD_PRELOAD=/l.so:/a.so /b.so", "A=1"}));
  EXPECT_EQ(withPreloadedLibrary({"LD_PRELOAD="}, "/l.so"), (Words{"LD_PRELOAD=/l.so"}));
}

}  // namespace
}  // namespace tarnix::companion
