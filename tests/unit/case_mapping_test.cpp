#include <gtest/gtest.h>

#include "probe/platform/text.h"

namespace tarnix::tests {
namespace {

TEST(CaseMappingTest, MapsToUpperCase) {
  const struct {
    const char* text;
    const char* upper;
  } cases[] = {
      {"", ""},
      {"get", "GET"},
      {"PaTcH-2", "PATCH-2"},
      {"GET", "GET"},
      {"stra\xC3\x9F"
       "e",
       "STRASSE"},                               // one character becomes two
      {"\xEF\xAC\x83", "FFI"},                   // a ligature becomes three
      {"\xCE\xB1\xCF\x82", "\xCE\x91\xCE\xA3"},  // both small sigmas have one capital
      {"i", "I"},                                // whatever the locale
      {"\xC5\x89", "\xCA\xBCN"},                 // longer in bytes too
  };
  for (const auto& [text, upper] : cases) {
    EXPECT_EQ(platform::uppercased(text), upper) << text;
  }
}

TEST(CaseMappingTest, ReplacesWhatIsNotUtf8) {
  EXPECT_EQ(platform::uppercased("a\xFF"
                                 "b"),
            "A\xEF\xBF\xBD"
            "B");
}

TEST(CaseMappingTest, GrowsAsFarAsItMust) {
  std::string text;
  std::string upper;
  for (int count = 0; count < 1000; ++count) {
    text += "\xCE\x90";                   // iota with dialytika and tonos: 2 bytes
    upper += "\xCE\x99\xCC\x88\xCC\x81";  // becomes three characters of 2 bytes each
  }
  EXPECT_EQ(platform::uppercased(text), upper);
}

}  // namespace
}  // namespace tarnix::tests
