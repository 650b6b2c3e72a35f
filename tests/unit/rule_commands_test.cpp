#include "probe/commands/rule_commands.h"

#include <map>
#include <optional>

#include "probe/commands/probe_command_handler.h"
#include "probe/network/probe_intercept_rules.h"
#include "probe/network/probe_mock_rules.h"
#include "tests/unit/fake_world.h"

namespace tarnix::tests {
namespace {

using Type = CompanionMessageType;

class RuleCommandsTest : public ServerTest {
 protected:
  RuleCommandsTest() {
    startServer();
    companion_ = connectCompanion();
    companion_->written.clear();
    forgetLines();
  }

  ~RuleCommandsTest() override {
    // The stores belong to the process: nothing may stay for the next test.
    while (const auto rule = mockFor("u")) {
      ProbeMockRules::shared().removeRule(rule->id);
    }
    while (const auto rule = interceptFor("u")) {
      ProbeInterceptRules::shared().removeRule(rule->id);
    }
  }

  void handle(Type type, std::string payload) {
    ProbeCommandHandler::handle({type, std::move(payload), {}});
    world_.settle();
  }

  static platform::UrlRequest requestFor(const std::string& url) {
    platform::UrlRequest request;
    request.url = Url(url);
    return request;
  }
  static std::optional<ProbeMockRules::MockRule> mockFor(const std::string& url) {
    return ProbeMockRules::shared().findMatch(requestFor(url));
  }
  static std::optional<ProbeInterceptRules::InterceptRule> interceptFor(const std::string& url) {
    return ProbeInterceptRules::shared().findMatch(requestFor(url));
  }

  static std::string removal(const std::string& id) { return R"({"ruleId":")" + id + "\"}"; }

  std::shared_ptr<fakes::FakeConnection> companion_;
};

const std::string pattern45 = "https://shop.test/0123456789/0123456789/01234";

TEST_F(RuleCommandsTest, AddAMockRuleWithDefaults) {
  handle(Type::commandAddMockRule, R"({"urlPattern":")" + pattern45 + "\"}");
  const auto rule = mockFor(pattern45);
  ASSERT_TRUE(rule);
  EXPECT_NE(rule->id, Uuid());
  EXPECT_EQ(rule->name, "Mock https://shop.test/0123456789/0");
  EXPECT_EQ(rule->urlPattern, pattern45);
  EXPECT_EQ(rule->matchMode, "contains");
  EXPECT_EQ(rule->httpMethod, std::nullopt);
  EXPECT_EQ(rule->statusCode, 200);
  EXPECT_EQ(rule->responseBody, "{}");
  EXPECT_EQ(rule->responseHeaders,
            (std::map<std::string, std::string>{{"Content-Type", "application/json"}}));
  EXPECT_EQ(standardError(), "[TarnixProbe] Mock rule added: ANY " + pattern45 + " → 200\n");
  EXPECT_EQ(companion_->written, "") << "no answer";
  handle(Type::commandRemoveMockRule, removal(rule->id.toString()));
}

TEST_F(RuleCommandsTest, AddAMockRuleAsTold) {
  handle(Type::commandAddMockRule,
         R"({"urlPattern":"^u","matchMode":"ReGeX","httpMethod":"","statusCode":404,)"
         R"("responseBody":"","responseHeaders":{},"name":"n","unknown":1})");
  const auto rule = mockFor("^u");
  ASSERT_TRUE(rule);
  EXPECT_EQ(rule->name, "n");
  EXPECT_EQ(rule->matchMode, "ReGeX");
  EXPECT_EQ(rule->httpMethod, "");
  EXPECT_EQ(rule->statusCode, 404);
  EXPECT_EQ(rule->responseBody, "");
  EXPECT_TRUE(rule->responseHeaders.empty());
  handle(Type::commandRemoveMockRule, removal(rule->id.toString()));
}

TEST_F(RuleCommandsTest, KeepTheDefaultBodyForAnotherStatus) {
  handle(Type::commandAddMockRule, R"({"urlPattern":"u","statusCode":404})");
  const auto rule = mockFor("u");
  ASSERT_TRUE(rule);
  EXPECT_EQ(rule->statusCode, 404);
  EXPECT_EQ(rule->responseBody, "{}");
  handle(Type::commandRemoveMockRule, removal(rule->id.toString()));
}

TEST_F(RuleCommandsTest, TakeNullForAbsent) {
  handle(Type::commandAddMockRule,
         R"({"urlPattern":"u","matchMode":null,"httpMethod":null,"statusCode":null,)"
         R"("responseBody":null,"responseHeaders":null,"name":null})");
  const auto rule = mockFor("u");
  ASSERT_TRUE(rule);
  EXPECT_EQ(rule->name, "Mock u");
  EXPECT_EQ(rule->matchMode, "contains");
  EXPECT_EQ(rule->httpMethod, std::nullopt);
  EXPECT_EQ(rule->responseHeaders.size(), 1U);
  handle(Type::commandRemoveMockRule, removal(rule->id.toString()));
}

TEST_F(RuleCommandsTest, CutTheNameByCharactersThatPeopleSee) {
  // 31 times "e" with a combining accent: each is one character of three bytes.
  std::string pattern;
  for (int count = 0; count < 31; ++count) {
    pattern += "e\xCC\x81";
  }
  handle(Type::commandAddInterceptRule, R"({"urlPattern":")" + pattern + "\"}");
  const auto rule = interceptFor(pattern);
  ASSERT_TRUE(rule);
  EXPECT_EQ(rule->name, "Intercept " + pattern.substr(0, 30 * 3));
  handle(Type::commandRemoveInterceptRule, removal(rule->id.toString()));
}

TEST_F(RuleCommandsTest, AddAnInterceptRule) {
  const std::string name(500, 'n');
  handle(Type::commandAddInterceptRule,
         R"({"urlPattern":"/pay","httpMethod":"post","name":")" + name + "\"}");
  platform::UrlRequest request = requestFor("http://x/pay");
  request.httpMethod = "POST";
  const auto rule = ProbeInterceptRules::shared().findMatch(request);
  ASSERT_TRUE(rule);
  EXPECT_EQ(rule->name, name);
  EXPECT_EQ(rule->matchMode, "contains");
  EXPECT_FALSE(interceptFor("http://x/pay")) << "another method";
  EXPECT_EQ(standardError(), "[TarnixProbe] Intercept rule added: post /pay\n");
  EXPECT_EQ(companion_->written, "") << "no answer";
  handle(Type::commandRemoveInterceptRule, removal(rule->id.toString()));
}

TEST_F(RuleCommandsTest, RemoveRulesByTheirId) {
  handle(Type::commandAddMockRule, R"({"urlPattern":"u"})");
  handle(Type::commandAddInterceptRule, R"({"urlPattern":"u"})");
  const std::string mock = mockFor("u")->id.toString();
  const std::string intercept = interceptFor("u")->id.toString();
  forgetLines();

  for (const std::string& payload :
       {removal(""), removal("x"), removal(mock + "0"), removal("{" + mock + "}"),
        std::string(R"({"ruleId":null})"), std::string("{}"), removal(Uuid::random().toString()),
        removal(intercept)}) {
    handle(Type::commandRemoveMockRule, payload);
    EXPECT_TRUE(mockFor("u")) << payload;
  }
  handle(Type::commandRemoveInterceptRule, removal(mock));
  EXPECT_TRUE(interceptFor("u"));

  std::string lowerCase = mock;
  for (char& digit : lowerCase) {
    digit = digit >= 'A' && digit <= 'F' ? static_cast<char>(digit + ('a' - 'A')) : digit;
  }
  handle(Type::commandRemoveMockRule, removal(lowerCase));
  EXPECT_FALSE(mockFor("u"));
  handle(Type::commandRemoveInterceptRule, removal(intercept));
  EXPECT_FALSE(interceptFor("u"));
  EXPECT_EQ(standardError(), "");
  EXPECT_EQ(companion_->written, "");
}

TEST_F(RuleCommandsTest, DropWhatTheyCannotDecode) {
  for (const char* payload :
       {"", "null", "[]", "{}", R"({"urlPattern":1})", R"({"urlPattern":"u","statusCode":"200"})",
        R"({"urlPattern":"u","responseHeaders":{"a":1}})", R"({"urlPattern":"u","name":[]})",
        R"({"urlPattern":"u","statusCode":1.5})"}) {
    handle(Type::commandAddMockRule, payload);
    EXPECT_FALSE(mockFor("u")) << payload;
  }
  for (const char* payload : {"", "{}", R"({"urlPattern":"u","matchMode":false})"}) {
    handle(Type::commandAddInterceptRule, payload);
    EXPECT_FALSE(interceptFor("u")) << payload;
  }
  EXPECT_EQ(standardError(), "");
  EXPECT_EQ(companion_->written, "");
}

TEST_F(RuleCommandsTest, LetTheCompanionChooseTheId) {
  const std::string chosen = "01234567-89AB-4DEF-8123-456789ABCDEF";
  handle(Type::commandAddMockRule, R"({"urlPattern":"u","ruleId":")" + chosen + "\"}");
  EXPECT_EQ(mockFor("u")->id.toString(), chosen);
  handle(Type::commandRemoveMockRule, removal(chosen));
  EXPECT_FALSE(mockFor("u"));
  handle(Type::commandAddInterceptRule, R"({"urlPattern":"u","ruleId":")" + chosen + "\"}");
  EXPECT_EQ(interceptFor("u")->id.toString(), chosen);
  handle(Type::commandRemoveInterceptRule, removal(chosen));
  EXPECT_FALSE(interceptFor("u"));

  handle(Type::commandAddMockRule, R"({"urlPattern":"u","ruleId":"no UUID"})");
  ASSERT_TRUE(mockFor("u")) << "gets one of its own";
  EXPECT_NE(mockFor("u")->id, Uuid());
}

TEST_F(RuleCommandsTest, ArriveOverTheWire) {
  sendCommand(*companion_, Type::commandAddMockRule, R"({"urlPattern":"u"})");
  const auto rule = mockFor("u");
  ASSERT_TRUE(rule);
  sendCommand(*companion_, Type::commandRemoveMockRule, removal(rule->id.toString()));
  EXPECT_FALSE(mockFor("u"));
}

}  // namespace
}  // namespace tarnix::tests
