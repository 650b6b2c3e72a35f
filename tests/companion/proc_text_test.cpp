#include "companion/discovery/proc_text.h"

#include <gtest/gtest.h>

namespace tarnix::companion {
namespace {

constexpr std::string_view libraryLine =
    "7f1c0a200000-7f1c0a2a0000 r-xp 00000000 fe:01 1048 /opt/my app/lib/libtarnixprobe-core.so";

TEST(MapsNameProbe, KnowsTheCoreAmongMappings) {
  const std::string other = "7f1c0a000000-7f1c0a010000 r--p 00000000 fe:01 99 /lib/libc.so.6\n";
  struct Case {
    std::string maps;
    bool isProbed;
  };
  const Case cases[] = {
      {other + std::string(libraryLine) + "\n" + other, true},
      {other + std::string(libraryLine), true},
      {std::string(libraryLine) + " (deleted)\n", true},
      {other, false},
      {"", false},
      {"7f1c0a000000-7f1c0a010000 r--p 00000000 fe:01 99 /lib/libtarnixprobe.so\n", false},
      {"7f1c0a000000-7f1c0a010000 r--p 0 fe:01 99 /lib/mylibtarnixprobe-core.so\n", false},
      {"7f1c0a000000-7f1c0a010000 r--p 0 fe:01 99 /libtarnixprobe-core.so/other\n", false},
      {"libtarnixprobe-core.so", false},
  };
  for (const Case& test : cases) {
    EXPECT_EQ(mapsNameProbe(test.maps), test.isProbed) << test.maps;
  }
}

TEST(SocketInode, ReadsSocketsOnly) {
  EXPECT_EQ(socketInode("socket:[4711]"), 4711U);
  for (const std::string_view link : {"pipe:[4711]", "socket:[]", "socket:[47x]", "socket:[4711",
                                      "", "/dev/null", "socket:[99999999999999999999999]"}) {
    EXPECT_EQ(socketInode(link), std::nullopt) << link;
  }
}

constexpr std::string_view ipv4Table =
    "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid  timeout "
    "inode                                                     \n"
    "   0: 0100007F:9C41 00000000:0000 0A 00000000:00000000 00:00000000 00000000  1000        0 "
    "51234 1 0000000000000000 100 0 0 10 0                     \n"
    "   1: 00000000:0016 00000000:0000 0A 00000000:00000000 00:00000000 00000000     0        0 "
    "11111 1 0000000000000000 100 0 0 10 0                     \n"
    "   2: 0100007F:9C41 0100007F:D431 01 00000000:00000000 02:000000A0 00000000  1000        0 "
    "51240 2 0000000000000000 20 4 30 10 -1                    \n"
    "   3: 0100007F:ZZZZ 00000000:0000 0A 00000000:00000000 00:00000000 00000000  1000        0 "
    "51250 1 0000000000000000 100 0 0 10 0                     \n"
    "   4: 0100007F:9C42 00000000:0000 0A 00000000:0000";

constexpr std::string_view ipv6Table =
    "  sl  local_address                         remote_address                        st tx_queue "
    "rx_queue tr tm->when retrnsmt   uid  timeout inode\n"
    "   0: 00000000000000000000000001000000:9C41 00000000000000000000000000000000:0000 0A "
    "00000000:00000000 00:00000000 00000000  1000        0 51235 1 0000000000000000 100 0 0 10 0\n"
    "   1: 00000000000000000000000000000000:0050 00000000000000000000000000000000:0000 0A "
    "00000000:00000000 00:00000000 00000000     0        0 22222 1 0000000000000000 100 0 0 10 0\n";

TEST(LoopbackListeners, FindsListenersOnTheLoopbackAddressOnly) {
  EXPECT_EQ(loopbackListeners(ipv4Table, AddressFamily::ipv4),
            (std::vector<ListeningSocket>{{40'001, 51'234}}));
  EXPECT_EQ(loopbackListeners(ipv6Table, AddressFamily::ipv6),
            (std::vector<ListeningSocket>{{40'001, 51'235}}));
}

TEST(LoopbackListeners, TakesAnyTextWithoutHarm) {
  for (const std::string_view text : {"", "\n\n", "0:", "  0: 0100007F:9C41", ": : : : :"}) {
    EXPECT_TRUE(loopbackListeners(text, AddressFamily::ipv4).empty()) << text;
  }
}

TEST(ParseProcessStat, ReadsParentAndStartTimeBehindAnyName) {
  const std::string fields =
      " S 17 42 42 0 -1 4194560 100 0 0 0 1 2 0 0 20 0 3 0 987654 1000 20 18446744073709551615";
  for (const std::string name : {"pentobi", "a b", ") S 1 (", "))", ""}) {
    const auto stat = parseProcessStat("42 (" + name + ")" + fields);
    ASSERT_TRUE(stat) << name;
    EXPECT_EQ(stat->parent, 17) << name;
    EXPECT_EQ(stat->startTime, 987'654U) << name;
  }
  EXPECT_FALSE(parseProcessStat(""));
  EXPECT_FALSE(parseProcessStat("42 (cut"));
  EXPECT_FALSE(parseProcessStat("42 (cut) S 17 42 42"));
}

TEST(ProgramName, IsTheLastPartOfThePath) {
  EXPECT_EQ(programName("/usr/games/pentobi"), "pentobi");
  EXPECT_EQ(programName("/usr/games/pentobi (deleted)"), "pentobi");
  EXPECT_EQ(programName("pentobi"), "pentobi");
}

}  // namespace
}  // namespace tarnix::companion
