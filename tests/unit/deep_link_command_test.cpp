#include "probe/commands/deep_link_command.h"

#include "probe/commands/probe_command_handler.h"
#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

class DeepLinkCommandTest : public FakeWorldTest {
 protected:
  static void handle(std::string payload) {
    ProbeCommandHandler::handle(
        {CompanionMessageType::commandFireDeepLink, std::move(payload), {}});
  }
};

TEST_F(DeepLinkCommandTest, OpensTheUrl) {
  handle(R"({"url":"shop://item/42?from=mail#top"})");
  EXPECT_EQ(world_.urlOpener.opened, std::vector<std::string>{"shop://item/42?from=mail#top"});
}

TEST_F(DeepLinkCommandTest, DoesNothingWithWhatIsNoUrl) {
  for (const char* payload : {"", "{}", R"({"url":""})", R"({"url":"two words"})",
                              R"({"url":"shop://%"})", R"({"url":null})", R"({"url":7})"}) {
    handle(payload);
  }
  EXPECT_TRUE(world_.urlOpener.opened.empty());
  EXPECT_TRUE(fakes::FakeServices::shared().lines.empty());
}

TEST_F(DeepLinkCommandTest, DoesNothingInAHostThatCannotOpenUrls) {
  platform::Platform without = platform::current();
  without.urlOpener = nullptr;
  platform::setCurrent(without);
  handle(R"({"url":"shop://item"})");
  EXPECT_TRUE(world_.urlOpener.opened.empty());
}

}  // namespace
}  // namespace tarnix::tests
