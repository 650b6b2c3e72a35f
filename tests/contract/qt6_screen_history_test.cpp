#include <gtest/gtest.h>

#include <QObject>
#include <memory>
#include <string>
#include <vector>

#include "platforms/qt6/base/screen_history.h"

namespace tarnix::contract {
namespace {

using qt6::Screen;
using qt6::ScreenChain;
using qt6::ScreenHistory;

std::unique_ptr<QObject> named(const char* name) {
  auto object = std::make_unique<QObject>();
  object->setObjectName(name);
  return object;
}

Screen certain(QObject& object, const char* title = "") {
  return {&object, nullptr, title, true, false};
}
Screen toolkits(QObject& object) { return {&object, nullptr, {}, true, true}; }
Screen perhaps(QObject& object) { return {&object, nullptr, {}, false, false}; }

class ScreenHistoryTest : public testing::Test {
 protected:
  std::vector<std::string> appeared(const ScreenChain& chain) {
    std::vector<std::string> names;
    for (const Screen& screen : history_.appeared(chain)) {
      names.push_back(screen.object->objectName().toStdString());
    }
    return names;
  }

  using Names = std::vector<std::string>;

  std::unique_ptr<QObject> window_ = named("window");
  std::unique_ptr<QObject> one_ = named("one");
  std::unique_ptr<QObject> two_ = named("two");
  std::unique_ptr<QObject> inner_ = named("inner");
  ScreenHistory history_;
};

TEST_F(ScreenHistoryTest, TellsAWindowBeforeThePageInIt) {
  EXPECT_EQ(appeared({certain(*window_), certain(*one_)}), (Names{"window", "one"}));
}

TEST_F(ScreenHistoryTest, TellsNothingTwice) {
  appeared({certain(*window_), certain(*one_)});
  EXPECT_EQ(appeared({certain(*window_), certain(*one_)}), Names{});
}

TEST_F(ScreenHistoryTest, TellsOnlyThePageThatIsNew) {
  appeared({certain(*window_), certain(*one_)});
  EXPECT_EQ(appeared({certain(*window_), certain(*two_)}), Names{"two"});
}

TEST_F(ScreenHistoryTest, TellsOfAReturn) {
  appeared({certain(*window_), certain(*one_)});
  appeared({certain(*window_), certain(*one_), certain(*two_)});
  EXPECT_EQ(appeared({certain(*window_), certain(*one_)}), Names{"one"});
  EXPECT_EQ(appeared({certain(*window_)}), Names{"window"});
}

TEST_F(ScreenHistoryTest, TellsOfAReturnFromNothing) {
  appeared({certain(*window_)});
  EXPECT_EQ(appeared({}), Names{});
  EXPECT_EQ(appeared({certain(*window_)}), Names{"window"});
}

TEST_F(ScreenHistoryTest, TellsOfANewTitle) {
  appeared({certain(*window_, "old"), certain(*one_, "old")});
  EXPECT_EQ(appeared({certain(*window_, "new"), certain(*one_, "old")}), Names{});
  EXPECT_EQ(appeared({certain(*window_, "new"), certain(*one_, "new")}), Names{"one"});
}

TEST_F(ScreenHistoryTest, TellsTheScreenAroundAPageOfTheToolkits) {
  appeared({certain(*window_), certain(*one_)});
  EXPECT_EQ(appeared({certain(*window_), toolkits(*two_)}), (Names{"window", "two"}));
}

TEST_F(ScreenHistoryTest, WaitsUntilWhatIsNotCertainIsExchanged) {
  EXPECT_EQ(appeared({certain(*window_), perhaps(*one_), perhaps(*inner_)}), Names{"window"});
  EXPECT_EQ(appeared({certain(*window_), perhaps(*two_)}), Names{"two"});
  EXPECT_EQ(appeared({certain(*window_), perhaps(*one_), perhaps(*inner_)}), Names{"one"});
  EXPECT_EQ(appeared({certain(*window_)}), Names{"window"});
}

TEST_F(ScreenHistoryTest, ForgetsWhatIsGone) {
  appeared({certain(*window_), certain(*one_)});
  one_.reset();
  EXPECT_EQ(appeared({certain(*window_), certain(*two_)}), Names{"two"});
  two_.reset();
  EXPECT_EQ(appeared({certain(*window_)}), Names{"window"});
  history_.forget();
  EXPECT_EQ(appeared({certain(*window_)}), Names{"window"});
}

}  // namespace
}  // namespace tarnix::contract
