#include "probe/inspect/truncation.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tarnix::tests {
namespace {

using Limits = std::numeric_limits<std::int64_t>;

TEST(Truncation, GoesTowardZero) {
  EXPECT_EQ(truncatedTowardZero(16.7), 16);
  EXPECT_EQ(truncatedTowardZero(-16.7), -16);
  EXPECT_EQ(truncatedTowardZero(0.999), 0);
  EXPECT_EQ(truncatedTowardZero(-0.999), 0);
  EXPECT_EQ(truncatedTowardZero(402.0), 402);
}

TEST(Truncation, StopsAtWhatSixtyFourBitsHold) {
  EXPECT_EQ(truncatedTowardZero(1e300), Limits::max());
  EXPECT_EQ(truncatedTowardZero(9'223'372'036'854'775'808.0), Limits::max());
  EXPECT_EQ(truncatedTowardZero(9'223'372'036'854'774'784.0), 9'223'372'036'854'774'784);
  EXPECT_EQ(truncatedTowardZero(-9'223'372'036'854'775'808.0), Limits::min());
  EXPECT_EQ(truncatedTowardZero(-1e300), Limits::min());
  EXPECT_EQ(truncatedTowardZero(std::numeric_limits<double>::infinity()), Limits::max());
  EXPECT_EQ(truncatedTowardZero(-std::numeric_limits<double>::infinity()), Limits::min());
}

TEST(Truncation, MakesZeroOfWhatIsNoNumber) { EXPECT_EQ(truncatedTowardZero(std::nan("")), 0); }

}  // namespace
}  // namespace tarnix::tests
