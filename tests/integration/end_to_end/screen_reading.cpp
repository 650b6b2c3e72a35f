#include "tests/integration/end_to_end/screen_reading.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <sstream>

#include "tests/integration/harness/wait_until.h"

namespace tarnix::integration {

using companion::CompanionClient;

std::optional<ScreenHTMLResponse> readScreen(std::uint16_t port) {
  const auto deadline = companion::deadlineIn(patience);
  auto client = CompanionClient::connect({"127.0.0.1", port}, deadline);
  if (!client) {
    ADD_FAILURE() << client.error().message;
    return std::nullopt;
  }
  const auto answer =
      client->request(companion::makeCommand(CompanionMessageType::commandScreenHTML),
                      CompanionMessageType::responseScreenHTML, deadline);
  if (!answer) {
    ADD_FAILURE() << answer.error().message;
    return std::nullopt;
  }
  return answer->decode<ScreenHTMLResponse>();
}

std::vector<ScreenElement> parseScreen(const std::string& html) {
  static const std::regex line(
      R"re(<(\w+)(?: type=range)? id=(\d+) c="(-?\d+),(-?\d+)"(?: v="[^"]*")?(?: (?:alt|placeholder|label)="([^"]*)">|>(.*)</\w+>))re");
  std::vector<ScreenElement> elements;
  std::istringstream stream(html);
  for (std::string text; std::getline(stream, text);) {
    std::smatch match;
    if (std::regex_match(text, match, line)) {
      elements.push_back({match[1], std::stoi(match[2]), std::stoi(match[3]), std::stoi(match[4]),
                          match[5].matched ? match[5] : match[6]});
    } else if (text != "</html>" && !text.starts_with("<html><title>")) {
      ADD_FAILURE() << "not a line of the format: " << text;
    }
  }
  return elements;
}

std::optional<ScreenElement> elementWithLabel(const std::vector<ScreenElement>& elements,
                                              const std::string& label) {
  const auto found =
      std::find_if(elements.begin(), elements.end(),
                   [&](const ScreenElement& element) { return element.label == label; });
  return found == elements.end() ? std::nullopt : std::optional(*found);
}

}  // namespace tarnix::integration
