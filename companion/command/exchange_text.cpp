#include "companion/command/exchange_text.h"

#include <fmt/format.h>

#include <array>
#include <charconv>
#include <optional>

#include "companion/output/display_text.h"
#include "companion/output/time_of_day.h"
#include "probe/link/json_codec.h"
#include "probe/model/body_limits.h"
#include "probe/model/mime_type.h"

namespace tarnix::companion {
namespace {

std::string durationText(double seconds) {
  if (seconds < 10) {
    return fmt::format("{:.0f} ms", seconds * 1000);
  }
  return fmt::format("{:.1f} s", seconds);
}

std::optional<std::uint64_t> announcedSize(const TransferableNetworkRequest& exchange) {
  for (const auto& [name, value] : exchange.responseHeaders) {
    std::uint64_t size = 0;
    if (isSameHeaderName(name, "Content-Length") &&
        std::from_chars(value.data(), value.data() + value.size(), size).ec == std::errc()) {
      return size;
    }
  }
  return std::nullopt;
}

/// As announced by the server; else what the probe has, which may be only the beginning.
std::string sizeOf(const TransferableNetworkRequest& exchange) {
  if (const std::optional<std::uint64_t> size = announcedSize(exchange)) {
    return sizeText(*size);
  }
  const std::size_t kept = exchange.responseBody ? exchange.responseBody->data.size() : 0;
  if (!exchange.statusCode) {
    return "-";
  }
  return (kept >= responseBodyLimit ? ">" : "") + sizeText(kept);
}

std::string statusOf(const TransferableNetworkRequest& exchange, const Terminal& terminal) {
  const std::string text =
      exchange.statusCode ? fmt::format("{:>3}", *exchange.statusCode) : std::string("ERR");
  if (!exchange.statusCode || exchange.errorDescription || *exchange.statusCode >= 500) {
    return terminal.styled(text, Style::failure);
  }
  if (*exchange.statusCode >= 400) {
    return terminal.styled(text, Style::warning);
  }
  return *exchange.statusCode >= 300 ? terminal.styled(text, Style::quiet) : text;
}

std::string indented(const std::string& text) {
  std::string lines;
  std::size_t begin = 0;
  while (begin < text.size()) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    lines += "    " + text.substr(begin, end - begin) + "\n";
    begin = end + 1;
  }
  return lines;
}

std::string headerLines(const std::map<std::string, std::string>& headers) {
  std::string lines;
  for (const auto& [name, value] : headers) {
    lines += fmt::format("    {}: {}\n", printable(name), printable(value));
  }
  return lines;
}

std::string bodyLines(const std::optional<Bytes>& body) {
  if (!body) {
    return "";
  }
  return isText(body->data) ? indented(printable(body->data, KeptControls::lineFeeds))
                            : fmt::format("    ({} bytes that are no text)\n", body->data.size());
}

}  // namespace

bool isText(const std::string& bytes) {
  struct Text {
    std::string text;
    static constexpr auto fields() { return std::tuple{Field{"text", &Text::text}}; }
  };
  return bytes.find('\0') == std::string::npos && encodeJson(Text{bytes}).has_value();
}

std::string sizeText(std::uint64_t bytes) {
  constexpr std::array<const char*, 5> units = {"B", "kB", "MB", "GB", "TB"};
  if (bytes < 1000) {
    return fmt::format("{} B", bytes);
  }
  auto size = static_cast<double>(bytes);
  std::size_t unit = 0;
  while (size >= 999.5 && unit + 1 < units.size()) {
    size /= 1000;
    ++unit;
  }
  return size < 99.95 ? fmt::format("{:.1f} {}", size, units[unit])
                      : fmt::format("{:.0f} {}", size, units[unit]);
}

std::string exchangeLine(const TransferableNetworkRequest& exchange, const Terminal& terminal) {
  // What is known of a URL beside host and path: its query, which often tells requests apart.
  const std::size_t queryAt = exchange.url.find('?');
  const std::string query =
      queryAt == std::string::npos
          ? ""
          : exchange.url.substr(queryAt, exchange.url.find('#', queryAt) - queryAt);
  std::string place = printable(exchange.host) + printable(exchange.path) + printable(query);
  if (exchange.errorDescription) {
    place += "  " + printable(*exchange.errorDescription);
  }
  const std::string start =
      fmt::format("{}  {:<7} ", timeOfDay(exchange.timestamp), printable(exchange.method));
  const std::string figures =
      fmt::format(" {:>8} {:>9}  ", durationText(exchange.duration), sizeOf(exchange));
  if (const std::optional<std::size_t> width = terminal.width()) {
    const std::size_t taken = displayWidth(start) + 3 + displayWidth(figures);
    place = cutToWidth(place, *width > taken + 10 ? *width - taken : 10);
  }
  return start + statusOf(exchange, terminal) + figures + place + "\n";
}

std::string exchangeDetails(const TransferableNetworkRequest& exchange, const Terminal& terminal) {
  const auto title = [&terminal](const char* text) {
    return "  " + terminal.styled(text, Style::quiet) + "\n";
  };
  std::string text;
  if (!exchange.requestHeaders.empty() || exchange.requestBody) {
    text +=
        title("request") + headerLines(exchange.requestHeaders) + bodyLines(exchange.requestBody);
  }
  if (!exchange.responseHeaders.empty() || exchange.responseBody) {
    text += title("response") + headerLines(exchange.responseHeaders) +
            bodyLines(exchange.responseBody);
  }
  return text;
}

}  // namespace tarnix::companion
