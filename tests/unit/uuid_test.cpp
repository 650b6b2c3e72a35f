#include "probe/model/uuid.h"

#include <gtest/gtest.h>

#include <set>

namespace tarnix::tests {
namespace {

TEST(Uuid, IsWrittenInUpperCaseAndReadInEither) {
  const std::string upper = "0123ABCD-4567-489A-BCDE-F0123456789A";
  std::string lower = upper;
  for (char& letter : lower) {
    letter = static_cast<char>(std::tolower(letter));
  }
  ASSERT_TRUE(Uuid::parse(upper));
  EXPECT_EQ(Uuid::parse(upper)->toString(), upper);
  EXPECT_EQ(Uuid::parse(lower), Uuid::parse(upper));
  EXPECT_EQ(Uuid::parse("0123abCD-4567-489a-BCDE-f0123456789A"), Uuid::parse(upper));
}

TEST(Uuid, IsNotReadFromOtherForms) {
  for (const char* text :
       {"", "0123ABCD", "0123ABCD4567489ABCDEF0123456789A", "0123ABCD-4567-489A-BCDE-F0123456789",
        "0123ABCD-4567-489A-BCDE-F0123456789AB", "{123ABCD-4567-489A-BCDE-F012345678}",
        "0123ABCG-4567-489A-BCDE-F0123456789A", "0123ABC-D4567-489A-BCDE-F0123456789A",
        "0123ABCD_4567_489A_BCDE_F0123456789A", " 123ABCD-4567-489A-BCDE-F0123456789A"}) {
    EXPECT_FALSE(Uuid::parse(text)) << text;
  }
}

TEST(Uuid, OfItsOwnMakingIsRandomOfVersionFour) {
  std::set<std::string> seen;
  for (int count = 0; count < 1000; ++count) {
    const std::string text = Uuid::random().toString();
    EXPECT_EQ(text[14], '4');
    EXPECT_NE(std::string("89AB").find(text[19]), std::string::npos);
    EXPECT_TRUE(seen.insert(text).second);
  }
}

TEST(Uuid, IsZeroUnlessSaidOtherwise) {
  EXPECT_EQ(Uuid().toString(), "00000000-0000-0000-0000-000000000000");
}

}  // namespace
}  // namespace tarnix::tests
