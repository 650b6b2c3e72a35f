#include "probe/model/bounded_list.h"

#include <gtest/gtest.h>

namespace tarnix::tests {
namespace {

using Values = std::vector<int>;

TEST(BoundedList, KeepsTheNewestInOrder) {
  BoundedList<int, 3> list;
  EXPECT_EQ(list.all(), Values{});
  const std::vector<Values> expected = {{1},       {1, 2},    {1, 2, 3}, {2, 3, 4},
                                        {3, 4, 5}, {4, 5, 6}, {5, 6, 7}};
  for (int value = 1; value <= 7; ++value) {
    list.add(value);
    EXPECT_EQ(list.all(), expected[static_cast<std::size_t>(value - 1)]);
  }
}

TEST(BoundedList, HandsBackWhatHadToMakeWay) {
  BoundedList<int, 2> list;
  EXPECT_EQ(list.add(1), 0);
  EXPECT_EQ(list.add(2), 0);
  EXPECT_EQ(list.add(3), 1);
  EXPECT_EQ(list.add(4), 2);
}

TEST(BoundedList, GivesTheNewestOfItsValues) {
  BoundedList<int, 3> list;
  for (int value = 1; value <= 5; ++value) {
    list.add(value);
  }
  EXPECT_EQ(list.newest(0), Values{});
  EXPECT_EQ(list.newest(2), (Values{4, 5}));
  EXPECT_EQ(list.newest(9), (Values{3, 4, 5}));
}

TEST(BoundedList, StartsAfreshWhenCleared) {
  BoundedList<int, 3> list;
  for (int value = 1; value <= 5; ++value) {
    list.add(value);
  }
  list.clear();
  EXPECT_EQ(list.all(), Values{});
  list.add(6);
  list.add(7);
  EXPECT_EQ(list.all(), (Values{6, 7}));
}

}  // namespace
}  // namespace tarnix::tests
