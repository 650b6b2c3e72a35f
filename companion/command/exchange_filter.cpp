#include "companion/command/exchange_filter.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "companion/client/letter_case.h"

namespace tarnix::companion {
namespace {

/// Stands for the status of an exchange that has none.
constexpr int noStatus = -1;

std::optional<int> codeFrom(std::string_view text) {
  int code = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), code);
  const bool isWhole = error == std::errc() && end == text.data() + text.size();
  return isWhole && code >= 0 && code <= 999 ? std::optional(code) : std::nullopt;
}

template <class Item, class Fits>
bool anyFits(const std::vector<Item>& items, Fits fits) {
  return items.empty() || std::any_of(items.begin(), items.end(), fits);
}

}  // namespace

std::optional<ExchangeFilter> ExchangeFilter::make(std::vector<std::string> hosts,
                                                   std::vector<std::string> methods,
                                                   const std::vector<std::string>& statuses) {
  ExchangeFilter filter;
  for (std::string& host : hosts) {
    filter.hosts_.push_back(lowerCase(std::move(host)));
  }
  for (std::string& method : methods) {
    filter.methods_.push_back(lowerCase(std::move(method)));
  }
  for (const std::string& status : statuses) {
    const std::optional<StatusRange> range = rangeFrom(lowerCase(status));
    if (!range) {
      return std::nullopt;
    }
    filter.statuses_.push_back(*range);
  }
  return filter;
}

std::optional<ExchangeFilter::StatusRange> ExchangeFilter::rangeFrom(const std::string& text) {
  if (text == "error") {
    return StatusRange{noStatus, noStatus};
  }
  if (text.size() == 3 && text[0] >= '1' && text[0] <= '9' && text.substr(1) == "xx") {
    const int first = (text[0] - '0') * 100;
    return StatusRange{first, first + 99};
  }
  const std::size_t dash = text.find('-');
  const std::optional<int> lowest = codeFrom(std::string_view(text).substr(0, dash));
  const std::optional<int> highest =
      dash == std::string::npos ? lowest : codeFrom(std::string_view(text).substr(dash + 1));
  return lowest && highest ? std::optional(StatusRange{*lowest, *highest}) : std::nullopt;
}

bool ExchangeFilter::fits(const TransferableNetworkRequest& exchange) const {
  const std::string host = lowerCase(exchange.host);
  const std::string method = lowerCase(exchange.method);
  const auto status = exchange.statusCode.value_or(noStatus);
  return anyFits(hosts_,
                 [&](const std::string& part) { return host.find(part) != std::string::npos; }) &&
         anyFits(methods_, [&](const std::string& wanted) { return wanted == method; }) &&
         anyFits(statuses_, [&](const StatusRange& range) {
           return range.lowest <= status && status <= range.highest;
         });
}

}  // namespace tarnix::companion
