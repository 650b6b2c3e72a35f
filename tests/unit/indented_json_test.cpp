#include "probe/link/indented_json.h"

#include <gtest/gtest.h>

namespace tarnix::tests {
namespace {

TEST(IndentedJson, PutsEachMemberAndElementOnALineOfItsOwn) {
  EXPECT_EQ(indentedJson(R"({"a":"b","c":[1,{"d":null}],"e":[],"f":{}})"),
            R"({
  "a": "b",
  "c": [
    1,
    {
      "d": null
    }
  ],
  "e": [],
  "f": {}
})");
}

TEST(IndentedJson, LeavesStringsAlone) {
  EXPECT_EQ(indentedJson(R"(["{,:[\"]}\\","\\\""])"),
            "[\n  \"{,:[\\\"]}\\\\\",\n  \"\\\\\\\"\"\n]");
}

}  // namespace
}  // namespace tarnix::tests
