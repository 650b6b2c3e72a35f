#include "probe/link/companion_framer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarnix::tests {
namespace {

using Bodies = std::vector<std::string>;

std::string bytes(std::initializer_list<int> values) {
  std::string text;
  for (const int value : values) {
    text.push_back(static_cast<char>(value));
  }
  return text;
}

Bodies takeBodies(CompanionFramer& framer) {
  Bodies bodies;
  while (std::optional<std::string> body = framer.nextBody()) {
    bodies.push_back(*std::move(body));
  }
  return bodies;
}

const std::string threeFrames = bytes({0, 0, 0, 5}) + "first" + bytes({0, 0, 0, 0}) +
                                bytes({0, 0, 0, 2}) + "{}" + bytes({0, 0, 1, 0}) +
                                std::string(256, 'x');
const Bodies threeBodies = {"first", "{}", std::string(256, 'x')};

TEST(CompanionFramer, WritesTheLengthInFourBytesMostSignificantFirst) {
  EXPECT_EQ(CompanionFramer::handleOutput("hello"), bytes({0, 0, 0, 5}) + "hello");
  EXPECT_EQ(CompanionFramer::handleOutput(""), bytes({0, 0, 0, 0}));
  EXPECT_EQ(CompanionFramer::handleOutput(std::string(0x01'02'03, 'x'))->substr(0, 4),
            bytes({0, 1, 2, 3}));
}

TEST(CompanionFramer, FinishesABodyThatWasWrittenToItsPlace) {
  for (const std::string body : {"", "hello", "0123456789abcdef"}) {
    EXPECT_EQ(CompanionFramer::finishOutput(CompanionFramer::roomForHeader() + body),
              CompanionFramer::handleOutput(body));
  }
}

TEST(CompanionFramer, ReadsFramesOfOneReadOneByOneInOrder) {
  CompanionFramer framer;
  framer.handleInput(threeFrames);
  EXPECT_EQ(takeBodies(framer), threeBodies);
}

TEST(CompanionFramer, ReadsAStreamCutAtAnyTwoPlaces) {
  const std::string_view stream = threeFrames;
  for (std::size_t first = 0; first <= stream.size(); ++first) {
    for (std::size_t second = first; second <= stream.size(); second += 7) {
      CompanionFramer framer;
      Bodies bodies;
      for (const std::string_view part :
           {stream.substr(0, first), stream.substr(first, second - first), stream.substr(second)}) {
        framer.handleInput(part);
        for (std::string& body : takeBodies(framer)) {
          bodies.push_back(std::move(body));
        }
      }
      ASSERT_EQ(bodies, threeBodies) << "cut at " << first << " and " << second;
    }
  }
}

TEST(CompanionFramer, ReadsAStreamByteByByte) {
  CompanionFramer framer;
  Bodies bodies;
  for (const char byte : threeFrames) {
    framer.handleInput(std::string_view(&byte, 1));
    for (std::string& body : takeBodies(framer)) {
      bodies.push_back(std::move(body));
    }
  }
  EXPECT_EQ(bodies, threeBodies);
}

TEST(CompanionFramer, SkipsAnyNumberOfEmptyFrames) {
  CompanionFramer framer;
  framer.handleInput(std::string(4 * 1000, '\0') + bytes({0, 0, 0, 1}) + "x");
  EXPECT_EQ(takeBodies(framer), Bodies{"x"});
}

TEST(CompanionFramer, WaitsForTheRestOfHeaderAndBody) {
  CompanionFramer framer;
  EXPECT_EQ(framer.nextBody(), std::nullopt);
  framer.handleInput(bytes({0, 0, 0}));
  EXPECT_EQ(framer.nextBody(), std::nullopt);
  framer.handleInput(bytes({2}));
  EXPECT_EQ(framer.nextBody(), std::nullopt);
  framer.handleInput("a");
  EXPECT_EQ(framer.nextBody(), std::nullopt);
  framer.handleInput("b");
  EXPECT_EQ(framer.nextBody(), "ab");
}

TEST(CompanionFramer, TakesTheLargestAnnouncementWithoutMakingRoomForIt) {
  CompanionFramer framer;
  framer.handleInput(bytes({0xFF, 0xFF, 0xFF, 0xFF}) + "begin");
  EXPECT_EQ(framer.nextBody(), std::nullopt);
  EXPECT_LT(framer.room(), 1'000U);
}

TEST(CompanionFramer, GivesTheMemoryOfALargeFrameBack) {
  constexpr std::size_t large = 10'000'000;
  constexpr std::size_t small = 100'000;
  const std::string frame = *CompanionFramer::handleOutput(std::string(large, 'x'));
  const std::string next = *CompanionFramer::handleOutput("next");
  // With nothing, a part of a frame, and frames behind it.
  for (const std::string& behind : {std::string(), next.substr(0, 6), next + next}) {
    CompanionFramer framer;
    framer.handleInput(frame + behind);
    EXPECT_GT(framer.room(), large);
    EXPECT_EQ(framer.nextBody()->size(), large);
    EXPECT_LT(framer.room(), small);
    framer.handleInput(behind.size() == 6 ? next.substr(6) : next);
    EXPECT_EQ(framer.nextBody(), "next");
  }
}

TEST(CompanionFramer, PassesBodiesThroughWhateverTheyHold) {
  std::string body;
  for (int value = 0; value < 256; ++value) {
    body.push_back(static_cast<char>(value));
  }
  CompanionFramer framer;
  framer.handleInput(*CompanionFramer::handleOutput(body));
  EXPECT_EQ(framer.nextBody(), body);
}

TEST(CompanionFramer, KeepsItsPlaceOverAThousandFramesInOddReads) {
  std::string stream;
  for (int frame = 0; frame < 1000; ++frame) {
    stream += *CompanionFramer::handleOutput("body " + std::to_string(frame));
  }
  CompanionFramer framer;
  Bodies bodies;
  for (std::size_t start = 0; start < stream.size(); start += 977) {
    framer.handleInput(std::string_view(stream).substr(start, 977));
    for (std::string& body : takeBodies(framer)) {
      bodies.push_back(std::move(body));
    }
  }
  ASSERT_EQ(bodies.size(), 1000U);
  for (std::size_t frame = 0; frame < bodies.size(); ++frame) {
    EXPECT_EQ(bodies[frame], "body " + std::to_string(frame));
  }
}

}  // namespace
}  // namespace tarnix::tests
