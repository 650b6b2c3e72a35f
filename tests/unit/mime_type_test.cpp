#include "probe/model/mime_type.h"

#include <gtest/gtest.h>

namespace tarnix::tests {
namespace {

TEST(MimeTypeTest, IsWhatStandsBeforeTheParameters) {
  EXPECT_EQ(mimeTypeIn("text/html"), "text/html");
  EXPECT_EQ(mimeTypeIn("text/html; charset=utf-8"), "text/html");
  EXPECT_EQ(mimeTypeIn("  application/json ;x"), "application/json");
  EXPECT_EQ(mimeTypeIn(""), std::nullopt);
  EXPECT_EQ(mimeTypeIn(" \t"), std::nullopt);
  EXPECT_EQ(mimeTypeIn(";charset=utf-8"), std::nullopt);
}

TEST(MimeTypeTest, HeaderNamesAreComparedWithoutCase) {
  EXPECT_TRUE(isSameHeaderName("Content-Type", "content-TYPE"));
  EXPECT_FALSE(isSameHeaderName("Content-Type", "Content-Typ"));
  EXPECT_FALSE(isSameHeaderName("Content-Typ", "Content-Type"));
  EXPECT_TRUE(isSameHeaderName("", ""));
}

}  // namespace
}  // namespace tarnix::tests
