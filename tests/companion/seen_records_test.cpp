#include "companion/command/seen_records.h"

#include <gtest/gtest.h>

#include <vector>

namespace tarnix::companion {
namespace {

/// More than is remembered, and what the probe keeps and may send again.
constexpr std::size_t many = 10'000;
constexpr std::size_t kept = 500;

TEST(SeenRecords, KnowsWhatItWasTold) {
  SeenRecords seen;
  const Uuid one = Uuid::random();
  EXPECT_TRUE(seen.note(one));
  EXPECT_FALSE(seen.note(one));
  EXPECT_TRUE(seen.note(Uuid::random()));
}

TEST(SeenRecords, ForgetsTheOldestAndKnowsWhatCanComeAgain) {
  SeenRecords seen;
  std::vector<Uuid> all;
  for (std::size_t index = 0; index < many; ++index) {
    all.push_back(Uuid::random());
    EXPECT_TRUE(seen.note(all.back()));
  }
  for (std::size_t index = many - kept; index < many; ++index) {
    EXPECT_FALSE(seen.note(all[index]));
  }
  EXPECT_TRUE(seen.note(all.front()));
}

}  // namespace
}  // namespace tarnix::companion
