#include "platforms/linux/local_device.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <sstream>
#include <string>

#include "platforms/linux/system_clock.h"

namespace tarnix::linux_platform {
namespace {

struct MachineInfoCase {
  const char* name;
  const char* text;
  const char* prettyName;
};

class MachineInfoTest : public testing::TestWithParam<MachineInfoCase> {};

INSTANTIATE_TEST_SUITE_P(
    Files, MachineInfoTest,
    testing::Values(MachineInfoCase{"empty", "", ""},
                    MachineInfoCase{"other", "CHASSIS=laptop\n", ""},
                    MachineInfoCase{"plain", "PRETTY_HOSTNAME=Desk\nCHASSIS=desktop\n", "Desk"},
                    MachineInfoCase{"doubleQuotes", "PRETTY_HOSTNAME=\"Anna's \\\"big\\\" box\"\n",
                                    "Anna's \"big\" box"},
                    MachineInfoCase{"singleQuotes", "PRETTY_HOSTNAME='a \\ b'\n", "a \\ b"},
                    MachineInfoCase{"escapes", "PRETTY_HOSTNAME=My\\ Phone\n", "My Phone"},
                    MachineInfoCase{"quotesInTheMiddle", "PRETTY_HOSTNAME=\"My\"' 'Phone\n",
                                    "My Phone"},
                    MachineInfoCase{"lastOneCounts", "PRETTY_HOSTNAME=a\nPRETTY_HOSTNAME=b\n", "b"},
                    MachineInfoCase{"comment", "#PRETTY_HOSTNAME=a\n", ""},
                    MachineInfoCase{"blanks", "  PRETTY_HOSTNAME=\"  a b  \"  \r\n", "a b"},
                    MachineInfoCase{"emptyValue", "PRETTY_HOSTNAME=\"\"\n", ""},
                    MachineInfoCase{"unicode", "PRETTY_HOSTNAME=\"B\u00FCro \U0001F5A5\"\n",
                                    "B\u00FCro \U0001F5A5"},
                    MachineInfoCase{"notUtf8", "PRETTY_HOSTNAME=\"B\xFCro\"\n", ""},
                    MachineInfoCase{"surrogate", "PRETTY_HOSTNAME=\"\xED\xA0\x80\"\n", ""},
                    MachineInfoCase{"openQuote", "PRETTY_HOSTNAME=\"abc\n", "abc"}),
    [](const auto& information) { return std::string(information.param.name); });

TEST_P(MachineInfoTest, GivesThePrettyName) {
  std::istringstream stream(GetParam().text);
  EXPECT_EQ(prettyHostName(stream), GetParam().prettyName);
}

TEST(LocalDeviceTest, HasAName) { EXPECT_FALSE(LocalDevice::shared().name().empty()); }

TEST(LocalDeviceTest, IsNamedLikeTheHostUnlessItsOwnerNamedIt) {
  if (access("/etc/machine-info", F_OK) == 0) {
    GTEST_SKIP() << "this machine may have a name of its owner's";
  }
  std::array<char, 256> name{};
  gethostname(name.data(), name.size() - 1);
  EXPECT_EQ(LocalDevice::shared().name(), name.data());
}

TEST(SystemClockTest, TellsTheTimeOfDay) {
  const auto before = std::chrono::system_clock::now();
  const auto now = SystemClock::shared().now();
  const auto after = std::chrono::system_clock::now();
  EXPECT_LE(before, now);
  EXPECT_LE(now, after);
}

}  // namespace
}  // namespace tarnix::linux_platform
