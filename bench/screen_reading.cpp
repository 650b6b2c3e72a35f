// How long it takes to read one screen from outside: as HTML from the probe, and node by node over
// the desktop's accessibility bus, from the same running application, for 100, 1,000 and 10,000
// elements; and each other question about the screen beside them. Runs under bench/run, which
// provides an X server and a session bus.
//
//     bench_screen_reading LIBRARY_FOLDER QML_RUNTIME QML_FILE

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "bench/accessibility_bus_reader.h"
#include "bench/host_process.h"
#include "companion/client/companion_client.h"
#include "companion/discovery/process_scanner.h"
#include "probe/model/screen_html_response.h"

namespace tarnix::bench {
namespace {

using companion::CompanionClient;
using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds startUpLimit{120};
constexpr std::chrono::seconds answerLimit{30};
constexpr int htmlReadings = 50;
constexpr int busReadings = 3;

struct Times {
  double median = 0;
  double worst = 0;
};

Times milliseconds(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return {values[values.size() / 2], values.back()};
}

template <class Reading>
Times measure(int repetitions, Reading reading) {
  std::vector<double> values;
  for (int repetition = 0; repetition < repetitions; ++repetition) {
    const Clock::time_point start = Clock::now();
    reading();
    values.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
  }
  return milliseconds(std::move(values));
}

std::optional<CompanionClient> connectTo(const HostProcess& host) {
  const companion::Deadline limit = companion::deadlineIn(startUpLimit);
  while (!companion::isOver(limit)) {
    const std::vector<companion::ProbedProcess> found =
        companion::ProcessScanner().inspect({host.pid()});
    if (!found.empty() && !found.front().ports.empty()) {
      auto client = CompanionClient::connect({.port = found.front().ports.front()}, limit);
      return client ? std::optional(std::move(*client)) : std::nullopt;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return std::nullopt;
}

std::optional<std::int64_t> readHTML(CompanionClient& client) {
  const auto answer =
      client.request(companion::makeCommand(CompanionMessageType::commandScreenHTML),
                     CompanionMessageType::responseScreenHTML, companion::deadlineIn(answerLimit));
  const auto response = answer ? answer->decode<ScreenHTMLResponse>() : std::nullopt;
  return response ? std::optional(response->elementCount) : std::nullopt;
}

struct Question {
  const char* name;
  CompanionMessageType command;
  CompanionMessageType answer;
  const char* payload = "{}";
};

constexpr Question questions[] = {
    {"text", CompanionMessageType::commandScreenText, CompanionMessageType::responseScreenText},
    {"find", CompanionMessageType::commandFindElement, CompanionMessageType::responseFindElement,
     R"({"text":"7"})"},
    {"snapshot", CompanionMessageType::commandRequestSnapshot,
     CompanionMessageType::responseSnapshot},
    {"audit", CompanionMessageType::commandAccessibilityAudit,
     CompanionMessageType::responseAccessibilityAudit},
    {"screenshot", CompanionMessageType::commandRequestScreenshot,
     CompanionMessageType::responseScreenshot},
};

/// The round trips of all other questions, and how many of each go into one reading over the bus;
/// false when one got no answer.
bool printQuestions(CompanionClient& client, double busMilliseconds) {
  constexpr int repetitions = 20;
  fmt::print("      ");
  bool isAnswered = true;
  for (const Question& question : questions) {
    const Times times = measure(repetitions, [&] {
      isAnswered =
          isAnswered && client.request({question.command, question.payload, {}}, question.answer,
                                       companion::deadlineIn(answerLimit));
    });
    fmt::print("   {} {:.2f} ms ({:.0f} times)", question.name, times.median,
               busMilliseconds / times.median);
  }
  fmt::print("\n");
  return isAnswered;
}

bool waitForElements(CompanionClient& client, std::int64_t count) {
  const companion::Deadline limit = companion::deadlineIn(startUpLimit);
  while (!companion::isOver(limit)) {
    if (readHTML(client).value_or(0) >= count) {
      return true;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  return false;
}

bool compare(const std::string& libraries, const std::string& runtime, const std::string& file,
             int count) {
  auto environment = probed(libraries);
  environment["QT_QPA_PLATFORM"] = "xcb";
  environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1";
  const HostProcess host({runtime, file, "--", std::to_string(count)}, environment);
  std::optional<CompanionClient> client = connectTo(host);
  AccessibilityBusReader bus;
  if (!client || !waitForElements(*client, count) ||
      !bus.waitForApplication("Qml Runtime", static_cast<int>(startUpLimit.count()))) {
    fmt::print("{} elements: the application did not come up\n", count);
    return false;
  }
  const std::int64_t elements = *readHTML(*client);
  const Times html = measure(htmlReadings, [&] { readHTML(*client); });
  std::size_t nodes = 0;
  const Times slow = measure(busReadings, [&] { nodes = bus.readNamedNodes(); });
  fmt::print(
      "{:6} elements   HTML {:9.2f} ms (worst {:.2f})   accessibility bus, {} nodes {:10.1f} ms   "
      "{:.0f} times faster\n",
      elements, html.median, html.worst, nodes, slow.median, slow.median / html.median);
  return printQuestions(*client, slow.median) && nodes >= static_cast<std::size_t>(count);
}

}  // namespace
}  // namespace tarnix::bench

int main(int argc, char** argv) {
  if (argc != 4) {
    fmt::print(stderr, "usage: bench_screen_reading LIBRARY_FOLDER QML_RUNTIME QML_FILE\n");
    return 2;
  }
  fmt::print("round trip to the whole screen, medians of {} and {} readings; bound: 100 times\n",
             tarnix::bench::htmlReadings, tarnix::bench::busReadings);
  for (const int count : {100, 1000, 10'000}) {
    if (!tarnix::bench::compare(argv[1], argv[2], argv[3], count)) {
      return 1;
    }
  }
  return 0;
}
