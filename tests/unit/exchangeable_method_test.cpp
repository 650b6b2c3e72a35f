#include "probe/platform/exchangeable_method.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace tarnix::tests {
namespace {

using Method = platform::ExchangeableMethod<std::string(int)>;

TEST(ExchangeableMethodTest, CallsItsImplementation) {
  Method method([](int number) { return "first " + std::to_string(number); });
  EXPECT_EQ(method(1), "first 1");
  EXPECT_EQ(method.implementation()(2), "first 2");
  method.setImplementation([](int number) { return "second " + std::to_string(number); });
  EXPECT_EQ(method(3), "second 3");
}

TEST(ExchangeableMethodTest, ExchangesWithAnother) {
  Method one([](int) { return "one"; });
  Method other([](int) { return "other"; });
  Method::exchangeImplementations(one, other);
  EXPECT_EQ(one(0), "other");
  EXPECT_EQ(other(0), "one");
}

TEST(ExchangeableMethodTest, MayReplaceItselfWhileItRuns) {
  Method method([](int) { return ""; });
  method.setImplementation([&method](int number) {
    method.setImplementation([](int) { return "replaced"; });
    return "ran to its end " + std::to_string(number);
  });
  EXPECT_EQ(method(7), "ran to its end 7");
  EXPECT_EQ(method(7), "replaced");
}

TEST(ExchangeableMethodTest, SaysThatItWasReplaced) {
  std::string seen;
  Method method([](int) { return "before"; }, [&] { seen += method(0) + " "; });
  EXPECT_EQ(seen, "");
  method.setImplementation([](int) { return "one"; });
  method.setImplementation([](int) { return "two"; });
  EXPECT_EQ(seen, "one two ");
}

TEST(ExchangeableMethodTest, IsCalledAndReplacedByTwoThreads) {
  Method method([](int) { return "a"; });
  std::thread replacing([&method] {
    for (int turn = 0; turn < 1000; ++turn) {
      method.setImplementation([turn](int) { return turn % 2 == 0 ? "a" : "b"; });
    }
  });
  for (int turn = 0; turn < 1000; ++turn) {
    const std::string result = method(turn);
    EXPECT_TRUE(result == "a" || result == "b");
  }
  replacing.join();
}

}  // namespace
}  // namespace tarnix::tests
