#include "companion/command/exchange_text.h"

#include <gtest/gtest.h>

namespace tarnix::companion {
namespace {

const Terminal plain(false, false, std::nullopt);

TransferableNetworkRequest exchange() {
  TransferableNetworkRequest made;
  made.url = "https://shop.test/a?q=1#f";
  made.host = "shop.test";
  made.path = "/a";
  made.method = "GET";
  made.statusCode = 200;
  made.duration = 0.0426;
  made.responseHeaders = {{"content-length", "12345"}};
  return made;
}

/// Without the time of day, which depends on where the test runs.
std::string lineOf(const TransferableNetworkRequest& made, const Terminal& terminal = plain) {
  return exchangeLine(made, terminal).substr(std::string("00:00:00.000").size());
}

TEST(ExchangeTextTest, IsOneLine) {
  EXPECT_EQ(lineOf(exchange()), "  GET     200    43 ms   12.3 kB  shop.test/a?q=1\n");
}

TEST(ExchangeTextTest, SaysWhyThereIsNoResponse) {
  TransferableNetworkRequest failed = exchange();
  failed.statusCode.reset();
  failed.responseHeaders.clear();
  failed.errorDescription = "Connection\nrefused";
  EXPECT_EQ(lineOf(failed),
            "  GET     ERR    43 ms         -  shop.test/a?q=1  Connection\\nrefused\n");
}

TEST(ExchangeTextTest, CountsWhatIsThereWhereNoSizeWasAnnounced) {
  TransferableNetworkRequest made = exchange();
  made.responseHeaders.clear();
  EXPECT_NE(lineOf(made).find("       0 B  "), std::string::npos);
  made.responseBody = Bytes{std::string(100, 'x')};
  EXPECT_NE(lineOf(made).find("     100 B  "), std::string::npos);
  made.responseBody = Bytes{std::string(4'096, 'x')};
  EXPECT_NE(lineOf(made).find("   >4.1 kB  "), std::string::npos) << "only the beginning is known";
}

TEST(ExchangeTextTest, FitsTheTerminal) {
  TransferableNetworkRequest made = exchange();
  made.path = "/" + std::string(500, 'x');
  const std::string line = exchangeLine(made, Terminal(true, false, 80));
  EXPECT_LE(line.size(), 80U + 3U) << "the ellipsis takes three bytes";
  EXPECT_NE(line.find("shop.test/xxx"), std::string::npos);
}

TEST(ExchangeTextTest, ColoursWhatWentWrong) {
  const Terminal coloured(true, true, std::nullopt);
  TransferableNetworkRequest made = exchange();
  EXPECT_EQ(lineOf(made, coloured).find('\x1b'), std::string::npos);
  made.statusCode = 404;
  EXPECT_NE(lineOf(made, coloured).find("\x1b[33m404"), std::string::npos);
  made.statusCode = 500;
  EXPECT_NE(lineOf(made, coloured).find("\x1b[31m500"), std::string::npos);
}

TEST(ExchangeTextTest, LetsNoHostDrawOnTheTerminal) {
  TransferableNetworkRequest made = exchange();
  made.method = "G\x1b[2J";
  made.path = "/\x1b]0;x\a";
  made.requestHeaders = {{"A", "\x1b[31m"}};
  made.responseBody = Bytes{"\x1b[1m"};
  EXPECT_EQ(exchangeLine(made, plain).find('\x1b'), std::string::npos);
  EXPECT_EQ(exchangeDetails(made, plain).find('\x1b'), std::string::npos);
}

TEST(ExchangeTextTest, ShowsHeadersAndBodies) {
  TransferableNetworkRequest made = exchange();
  made.requestHeaders = {{"Accept", "*/*"}};
  made.requestBody = Bytes{"one\ntwo"};
  made.responseBody = Bytes{std::string("\0\xff", 2)};
  EXPECT_EQ(exchangeDetails(made, plain),
            "  request\n    Accept: */*\n    one\n    two\n"
            "  response\n    content-length: 12345\n    (2 bytes that are no text)\n");
}

TEST(ExchangeTextTest, WritesSizes) {
  const struct {
    std::uint64_t bytes;
    const char* text;
  } cases[] = {{0, "0 B"},          {999, "999 B"},        {1'000, "1.0 kB"},
               {99'940, "99.9 kB"}, {99'960, "100 kB"},    {999'499, "999 kB"},
               {999'500, "1.0 MB"}, {1'500'000, "1.5 MB"}, {2'000'000'000, "2.0 GB"}};
  for (const auto& [bytes, text] : cases) {
    EXPECT_EQ(sizeText(bytes), text);
  }
}

}  // namespace
}  // namespace tarnix::companion
