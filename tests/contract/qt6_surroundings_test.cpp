#include <gtest/gtest.h>

#include <limits>

#include "platforms/qt6/shared/frame.h"
#include "platforms/qt6/shared/surroundings.h"

namespace tarnix::qt6 {
namespace {

TEST(Qt6Surroundings, WhatNothingClipsIsSeenWhole) {
  EXPECT_EQ(Surroundings().visiblePart({10, 20, 30, 40}), QRectF(10, 20, 30, 40));
}

TEST(Qt6Surroundings, WhatIsClippedIsSeenWhereItIsSeen) {
  const Surroundings inside = Surroundings().clippedTo({0, 0, 100, 100});
  EXPECT_EQ(inside.visiblePart({80, 10, 40, 20}), QRectF(80, 10, 20, 20));
  EXPECT_TRUE(inside.visiblePart({120, 10, 40, 20}).isEmpty());
  EXPECT_EQ(inside.clippedTo({50, 0, 100, 100}).visiblePart({0, 0, 100, 20}),
            QRectF(50, 0, 50, 20));
}

TEST(Qt6Surroundings, ASliverIsNotSeen) {
  const Surroundings inside = Surroundings().clippedTo({0, 0, 100, 100});
  EXPECT_TRUE(inside.visiblePart({0, 95, 100, 40}).isEmpty());
  EXPECT_FALSE(inside.visiblePart({0, 88, 100, 40}).isEmpty());
  // Half of a small thing is enough.
  EXPECT_FALSE(inside.visiblePart({0, 96, 8, 8}).isEmpty());
  EXPECT_TRUE(inside.visiblePart({0, 97, 8, 8}).isEmpty());
}

TEST(Qt6Surroundings, OfWhatIsCoveredTheLargestRestIsSeen) {
  Surroundings behind;
  behind.cover(QRect(0, 0, 60, 100));
  EXPECT_TRUE(behind.visiblePart({10, 10, 40, 20}).isEmpty());
  EXPECT_EQ(behind.visiblePart({40, 10, 60, 20}), QRectF(60, 10, 40, 20));
  EXPECT_EQ(behind.visiblePart({70, 10, 40, 20}), QRectF(70, 10, 40, 20));
}

TEST(Qt6Surroundings, ScrolledContentCountsAsAWholeAndIsCoveredOnlyWhereItIsShown) {
  const Surroundings window = Surroundings().clippedTo({0, 0, 100, 100});
  Surroundings content = window.unclippedIn({0, 0, 100, 50});
  EXPECT_EQ(content.visiblePart({0, 400, 50, 20}), QRectF(0, 400, 50, 20));
  // A bar below the container is over content that is not shown there anyway.
  content.cover(QRect(0, 50, 100, 500));
  EXPECT_EQ(content.visiblePart({0, 400, 50, 20}), QRectF(0, 400, 50, 20));
  content.cover(QRect(0, 0, 100, 100));
  EXPECT_TRUE(content.visiblePart({0, 10, 50, 20}).isEmpty());
}

TEST(Qt6Frame, IsFiniteOrEmpty) {
  constexpr double infinite = std::numeric_limits<double>::infinity();
  constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(frameOf({1, 2, 3, 4}), (platform::Rect{{1, 2}, {3, 4}}));
  for (const QRectF& area :
       {QRectF(notANumber, 0, 1, 1), QRectF(0, infinite, 1, 1), QRectF(0, 0, infinite, 1),
        QRectF(0, 0, 1, notANumber), QRectF(1e300, 0, 1, 1), QRectF(0, 0, -1, 1)}) {
    EXPECT_EQ(frameOf(area), platform::Rect());
  }
}

}  // namespace
}  // namespace tarnix::qt6
