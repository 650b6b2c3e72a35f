#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "probe/network/probe_intercept_rules.h"
#include "probe/network/probe_mock_rules.h"
#include "tests/fakes/fake_services.h"

namespace tarnix::tests {
namespace {

using MockRule = ProbeMockRules::MockRule;
using InterceptRule = ProbeInterceptRules::InterceptRule;

platform::UrlRequest requestFor(const std::optional<std::string>& url,
                                std::optional<std::string> method = "GET") {
  platform::UrlRequest request;
  request.url = url ? std::optional(Url(*url)) : std::nullopt;
  request.httpMethod = std::move(method);
  return request;
}

struct MockStore {
  using Rules = ProbeMockRules;
  using Rule = MockRule;
};
struct InterceptStore {
  using Rules = ProbeInterceptRules;
  using Rule = InterceptRule;
};

/// What both stores do alike.
template <class Store>
class NetworkRulesTest : public testing::Test {
 protected:
  using Rule = typename Store::Rule;

  Rule rule(std::string name, std::string pattern, std::string mode,
            std::optional<std::string> method = std::nullopt) {
    Rule made;
    made.id = Uuid::random();
    made.name = std::move(name);
    made.urlPattern = std::move(pattern);
    made.matchMode = std::move(mode);
    made.httpMethod = std::move(method);
    return made;
  }

  std::string nameOfMatch(const platform::UrlRequest& request) const {
    const std::optional<Rule> match = rules_.findMatch(request);
    return match ? match->name : "none";
  }

  /// Whether one rule, alone in a store, matches.
  bool matches(std::string pattern, std::string mode, std::optional<std::string> method,
               const platform::UrlRequest& request) {
    typename Store::Rules rules;
    rules.addRule(rule("it", std::move(pattern), std::move(mode), std::move(method)));
    return rules.findMatch(request).has_value();
  }

  typename Store::Rules rules_;
};

using Stores = testing::Types<MockStore, InterceptStore>;
TYPED_TEST_SUITE(NetworkRulesTest, Stores);

TYPED_TEST(NetworkRulesTest, FindsNothingWithoutRules) {
  EXPECT_FALSE(this->rules_.findMatch(requestFor("https://shop.test/")));
}

TYPED_TEST(NetworkRulesTest, TakesTheFirstRuleThatMatches) {
  this->rules_.addRule(this->rule("A", "https", "prefix"));
  this->rules_.addRule(this->rule("B", "api", "contains"));
  EXPECT_EQ(this->nameOfMatch(requestFor("https://shop.test/api")), "A");
  EXPECT_EQ(this->nameOfMatch(requestFor("http://shop.test/api")), "B");
  EXPECT_EQ(this->nameOfMatch(requestFor("http://shop.test/")), "none");

  typename TypeParam::Rules reversed;
  reversed.addRule(this->rule("B", "api", "contains"));
  reversed.addRule(this->rule("A", "https", "prefix"));
  EXPECT_EQ(reversed.findMatch(requestFor("https://shop.test/api"))->name, "B");
}

TYPED_TEST(NetworkRulesTest, TestsTheUrlByItsMode) {
  const struct {
    const char* pattern;
    const char* mode;
    const char* url;  // null: a request without one
    bool matches;
  } cases[] = {
      {"https://shop", "prefix", "https://shop.test/", true},
      {"HTTPS://shop", "prefix", "https://shop.test/", false},
      {"shop", "prefix", "https://shop.test/", false},
      {"", "prefix", "https://shop.test/", true},
      {"", "prefix", nullptr, true},
      {"h", "prefix", nullptr, false},
      {"/users/[0-9]+$", "regex", "https://shop.test/users/7", true},
      {"users", "regex", "https://shop.test/users/7", true},
      {"Users", "regex", "https://shop.test/users/7", false},
      {"^shop", "regex", "https://shop.test/", false},
      {"([", "regex", "https://shop.test/([", false},
      {"", "regex", "https://shop.test/", false},
      {"", "regex", nullptr, false},
      {"^$", "regex", nullptr, true},
      {"x*", "regex", nullptr, true},
      {".", "regex", nullptr, false},
      {"shop", "contains", "https://shop.test/", true},
      {"Shop", "contains", "https://shop.test/", false},
      {"", "contains", "https://shop.test/", true},
      {"", "contains", nullptr, true},
      {"x", "contains", nullptr, false},
      // There is no exact mode, and a misspelt mode searches for the text.
      {"shop", "exact", "https://shop.test/", true},
      {"shop", "", "https://shop.test/", true},
      {"shop", "Prefix", "https://shop.test/", true},
      {"sh.p", "Regex", "https://shop.test/", false},
      {"sh.p", "Regex", "https://sh.p/", true},
  };
  for (const auto& [pattern, mode, url, matches] : cases) {
    const auto request =
        requestFor(url == nullptr ? std::nullopt : std::optional<std::string>(url));
    EXPECT_EQ(this->matches(pattern, mode, std::nullopt, request), matches)
        << mode << " " << pattern << " against " << (url == nullptr ? "no URL" : url);
  }
}

TYPED_TEST(NetworkRulesTest, ComparesMethodsInUpperCase) {
  const struct {
    std::optional<std::string> ofRule;
    std::optional<std::string> ofRequest;
    bool matches;
  } cases[] = {
      {std::nullopt, "DELETE", true},
      {"", "DELETE", true},
      {"", std::nullopt, true},
      {"post", "POST", true},
      {"POST", "post", true},
      {"POST", "PUT", false},
      {"GET", std::nullopt, true},
      {"POST", std::nullopt, false},
      {"GET ", "GET", false},
      {"stra\xC3\x9F"
       "e",
       "STRASSE", true},
      {"GET", "", false},
  };
  for (const auto& [ofRule, ofRequest, matches] : cases) {
    EXPECT_EQ(this->matches("", "contains", ofRule, requestFor("http://x/", ofRequest)), matches)
        << ofRule.value_or("any") << " against " << ofRequest.value_or("none");
  }
}

TYPED_TEST(NetworkRulesTest, GoesOnBehindAPatternThatIsNoExpression) {
  this->rules_.addRule(this->rule("broken", "([", "regex"));
  this->rules_.addRule(this->rule("good", "shop", "regex"));
  EXPECT_EQ(this->nameOfMatch(requestFor("https://shop.test/")), "good");
  EXPECT_EQ(this->nameOfMatch(requestFor("https://shop.test/")), "good");
}

TYPED_TEST(NetworkRulesTest, RemovesEveryRuleOfAnId) {
  const auto kept = this->rule("kept", "x", "contains");
  auto first = this->rule("first", "shop", "contains");
  auto second = this->rule("second", "shop", "contains");
  second.id = first.id;
  this->rules_.addRule(first);
  this->rules_.addRule(kept);
  this->rules_.addRule(second);
  EXPECT_EQ(this->nameOfMatch(requestFor("http://shop.test/x")), "first");

  this->rules_.removeRule(Uuid::random());
  EXPECT_EQ(this->nameOfMatch(requestFor("http://shop.test/x")), "first");

  this->rules_.removeRule(first.id);
  EXPECT_EQ(this->nameOfMatch(requestFor("http://shop.test/x")), "kept");
  EXPECT_EQ(this->nameOfMatch(requestFor("http://shop.test/")), "none");

  this->rules_.removeRule(kept.id);
  EXPECT_EQ(this->nameOfMatch(requestFor("http://shop.test/x")), "none");
}

TYPED_TEST(NetworkRulesTest, KeepsTheOrderOfTheRestWhenOneIsRemoved) {
  std::vector<Uuid> ids;
  for (const char* name : {"1", "2", "3"}) {
    auto added = this->rule(name, "", "contains");
    ids.push_back(added.id);
    this->rules_.addRule(std::move(added));
  }
  this->rules_.removeRule(ids[0]);
  EXPECT_EQ(this->nameOfMatch(requestFor("http://x/")), "2");
  this->rules_.removeRule(ids[1]);
  EXPECT_EQ(this->nameOfMatch(requestFor("http://x/")), "3");
}

TYPED_TEST(NetworkRulesTest, HandsOutWholeRules) {
  auto added = this->rule("whole", "shop", "regex", "put");
  this->rules_.addRule(added);
  EXPECT_EQ(this->rules_.findMatch(requestFor("http://shop/", "PUT")), added);
}

TYPED_TEST(NetworkRulesTest, SearchesTenThousandRules) {
  for (int index = 0; index < 10'000; ++index) {
    this->rules_.addRule(this->rule(std::to_string(index), "/item/" + std::to_string(index) + "$",
                                    index % 2 == 0 ? "regex" : "contains"));
  }
  EXPECT_EQ(this->nameOfMatch(requestFor("http://x/item/9998")), "9998");
  EXPECT_EQ(this->nameOfMatch(requestFor("http://x/item/9999")), "none");
  EXPECT_EQ(this->nameOfMatch(requestFor("http://x/item/9999$")), "9999");
}

class NetworkRuleLinesTest : public testing::Test {
 protected:
  NetworkRuleLinesTest() { fakes::FakeServices::shared().reset(); }

  static std::vector<std::string> lines() { return fakes::FakeServices::shared().lines; }
};

TEST_F(NetworkRuleLinesTest, SayThatAMockRuleWasAdded) {
  ProbeMockRules rules;
  MockRule rule;
  rule.id = Uuid::random();
  rule.urlPattern = "/users";
  rule.statusCode = 503;
  rules.addRule(rule);
  rule.httpMethod = "post";
  rule.statusCode = -1;
  rules.addRule(rule);
  rule.httpMethod = "";
  rules.addRule(rule);
  rules.removeRule(rule.id);
  EXPECT_EQ(lines(), (std::vector<std::string>{
                         "stderr: [TarnixProbe] Mock rule added: ANY /users \xE2\x86\x92 503\n",
                         "stderr: [TarnixProbe] Mock rule added: post /users \xE2\x86\x92 -1\n",
                         "stderr: [TarnixProbe] Mock rule added:  /users \xE2\x86\x92 -1\n"}));
}

TEST_F(NetworkRuleLinesTest, SayThatAnInterceptRuleWasAdded) {
  ProbeInterceptRules rules;
  InterceptRule rule;
  rule.id = Uuid::random();
  rule.urlPattern = "/users";
  rules.addRule(rule);
  rule.httpMethod = "post";
  rules.addRule(rule);
  rule.httpMethod = "";
  rules.addRule(rule);
  rules.removeRule(rule.id);
  EXPECT_EQ(lines(),
            (std::vector<std::string>{"stderr: [TarnixProbe] Intercept rule added: ANY /users\n",
                                      "stderr: [TarnixProbe] Intercept rule added: post /users\n",
                                      "stderr: [TarnixProbe] Intercept rule added:  /users\n"}));
}

TEST(NetworkRuleStoresTest, AreOneForTheProcessEach) {
  EXPECT_EQ(&ProbeMockRules::shared(), &ProbeMockRules::shared());
  EXPECT_EQ(&ProbeInterceptRules::shared(), &ProbeInterceptRules::shared());
}

}  // namespace
}  // namespace tarnix::tests
