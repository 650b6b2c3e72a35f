#include "companion/command/exchange_filter.h"

#include <gtest/gtest.h>

namespace tarnix::companion {
namespace {

TransferableNetworkRequest exchange(std::string host, std::string method,
                                    std::optional<std::int64_t> status) {
  TransferableNetworkRequest made;
  made.host = std::move(host);
  made.method = std::move(method);
  made.statusCode = status;
  return made;
}

bool fits(const std::vector<std::string>& statuses, std::optional<std::int64_t> status) {
  return ExchangeFilter::make({}, {}, statuses)->fits(exchange("h", "GET", status));
}

TEST(ExchangeFilterTest, LetsEverythingThroughWithoutConditions) {
  const auto filter = ExchangeFilter::make({}, {}, {});
  EXPECT_TRUE(filter->fits(exchange("", "", std::nullopt)));
  EXPECT_TRUE(filter->fits(exchange("shop.test", "GET", 200)));
}

TEST(ExchangeFilterTest, KnowsStatuses) {
  const struct {
    std::vector<std::string> statuses;
    std::optional<std::int64_t> status;
    bool fits;
  } cases[] = {
      {{"404"}, 404, true},
      {{"404"}, 405, false},
      {{"404"}, std::nullopt, false},
      {{"4xx"}, 400, true},
      {{"4XX"}, 499, true},
      {{"4xx"}, 500, false},
      {{"4xx"}, 399, false},
      {{"200-204"}, 200, true},
      {{"200-204"}, 204, true},
      {{"200-204"}, 205, false},
      {{"error"}, std::nullopt, true},
      {{"error"}, 500, false},
      {{"404", "5xx"}, 404, true},
      {{"404", "5xx"}, 503, true},
      {{"404", "5xx"}, 200, false},
  };
  for (const auto& [statuses, status, expected] : cases) {
    EXPECT_EQ(fits(statuses, status), expected) << statuses[0] << " of " << status.value_or(-1);
  }
}

TEST(ExchangeFilterTest, RefusesWhatIsNoStatus) {
  for (const char* status : {"", "x", "4x", "40x", "0xx", "-1", "200-", "-", "200-x", "1000",
                             "4xxx", "2 00", "errors"}) {
    EXPECT_FALSE(ExchangeFilter::make({}, {}, {status})) << status;
  }
}

TEST(ExchangeFilterTest, ComparesHostsInPartAndMethodsWhole) {
  const auto filter = ExchangeFilter::make({"SHOP", "cdn."}, {"post", "Put"}, {});
  EXPECT_TRUE(filter->fits(exchange("www.shop.test", "POST", 200)));
  EXPECT_TRUE(filter->fits(exchange("CDN.other.test", "put", 200)));
  EXPECT_FALSE(filter->fits(exchange("other.test", "POST", 200)));
  EXPECT_FALSE(filter->fits(exchange("shop.test", "GET", 200)));
  EXPECT_FALSE(filter->fits(exchange("shop.test", "PUTT", 200)));
}

}  // namespace
}  // namespace tarnix::companion
