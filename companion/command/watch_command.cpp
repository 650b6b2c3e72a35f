#include <fmt/format.h>

#include <chrono>
#include <cstdio>
#include <thread>
#include <utility>

#include "companion/command/commands.h"
#include "companion/command/exchange_filter.h"
#include "companion/command/exchange_text.h"
#include "companion/command/host_session.h"
#include "companion/command/log_text.h"
#include "companion/command/seen_records.h"
#include "companion/command/standard_output.h"
#include "companion/output/display_text.h"
#include "probe/model/full_sync_payload.h"

namespace tarnix::companion {
namespace {

using namespace std::chrono_literals;

/// Another command of the user's may be using the application for a moment; this one gives way.
constexpr auto pauseAfterLoss = 1500ms;
constexpr auto pauseBetweenSearches = 500ms;

class Watch {
 public:
  Watch(const CommandOptions& options, const WatchOptions& watch, ExchangeFilter filter)
      : options_(options),
        watch_(watch),
        filter_(std::move(filter)),
        terminal_(Terminal::standardOutput(options.noColor)) {}

  ExitCode run() {
    std::variant<HostSession, ExitCode> first =
        openSession(options_, deadlineIn(options_.timeout()));
    if (const ExitCode* code = std::get_if<ExitCode>(&first)) {
      return *code;
    }
    HostSession session = std::get<HostSession>(std::move(first));
    say(fmt::format("watching {}", describe(session.target)));
    showSync(session.client.fullSync(), watch_.all);
    while (!isOver()) {
      Outcome<CompanionMessage> message = session.client.receive(deadlineIn(1h));
      if (message) {
        showEvent(*message);
      } else if (message.error().kind == ClientError::Kind::notUnderstood) {
        return report(message.error(), options_);
      } else if (message.error().kind != ClientError::Kind::noAnswer) {
        std::this_thread::sleep_for(pauseAfterLoss);
        session = connectAgain(session.target);
        showSync(session.client.fullSync(), true);
      }
    }
    return code_;
  }

 private:
  bool isOver() const {
    return code_ != ExitCode::success || (watch_.count != 0 && shown_ >= watch_.count);
  }

  static std::string describe(const HostTarget& target) {
    return target.pid ? fmt::format("{} ({}) on port {}", printable(target.application),
                                    *target.pid, target.port)
                      : fmt::format("port {}", target.port);
  }

  /// Beside the results, so that these stay clean for programs.
  void say(const std::string& line) const {
    fmt::print(stderr, "{}\n",
               Terminal::standardError(options_.noColor).styled("-- " + line, Style::quiet));
  }

  /// Waits, however long it takes, until the application is there again: the one that was lost, or
  /// its next run.
  HostSession connectAgain(const HostTarget& lost) const {
    bool hasSaid = false;
    while (true) {
      for (HostTarget& target : candidates(lost)) {
        Outcome<CompanionClient> client =
            CompanionClient::connect({options_.host, target.port}, deadlineIn(options_.timeout()));
        if (client) {
          if (hasSaid || target.pid != lost.pid) {
            say(fmt::format("watching {}", describe(target)));
          }
          return {std::move(target), std::move(*client)};
        }
      }
      if (!std::exchange(hasSaid, true)) {
        say(fmt::format("{} is gone; waiting for it", describe(lost)));
      }
      std::this_thread::sleep_for(pauseBetweenSearches);
    }
  }

  std::vector<HostTarget> candidates(const HostTarget& lost) const {
    if (options_.port) {
      return {lost};
    }
    HostChoice choice{std::nullopt, options_.name};
    if (!choice.name && !lost.application.empty()) {
      choice.name = lost.application;
    }
    std::vector<HostTarget> targets = discoverMatchingTargets(choice, deadlineIn(announcementTime));
    // The same process before any other of that name.
    std::stable_partition(targets.begin(), targets.end(),
                          [&lost](const HostTarget& target) { return target.pid == lost.pid; });
    return targets;
  }

  void showSync(const CompanionMessage& message, bool isShown) {
    const std::optional<FullSyncPayload> sync = message.decode<FullSyncPayload>();
    if (!sync) {
      return;
    }
    // As they happened: both lists are in that order.
    auto entry = sync->logEntries.begin();
    for (const TransferableNetworkRequest& exchange : sync->httpRequests) {
      for (; entry != sync->logEntries.end() && entry->timestamp < exchange.timestamp; ++entry) {
        showOrNote(*entry, isShown);
      }
      showOrNote(exchange, isShown);
    }
    for (; entry != sync->logEntries.end(); ++entry) {
      showOrNote(*entry, isShown);
    }
  }

  template <class Record>
  void showOrNote(const Record& record, bool isShown) {
    if (isShown) {
      show(record);
    } else {
      seen_.note(record.id);
    }
  }

  void showEvent(const CompanionMessage& message) {
    if (message.type == CompanionMessageType::eventHttpRequest) {
      if (const auto exchange = message.decode<TransferableNetworkRequest>()) {
        show(*exchange);
      }
    } else if (message.type == CompanionMessageType::eventLog) {
      if (const auto entry = message.decode<TransferableLogEntry>()) {
        show(*entry);
      }
    }
  }

  void show(const TransferableNetworkRequest& exchange) {
    if (!seen_.note(exchange.id) || !filter_.fits(exchange) || isOver()) {
      return;
    }
    ++shown_;
    code_ = writeToStandardOutput(text(exchange), options_);
  }

  void show(const TransferableLogEntry& entry) {
    if (!seen_.note(entry.id) || !watch_.log || !watch_.log->fits(entry) || isOver()) {
      return;
    }
    ++shown_;
    code_ = writeToStandardOutput(text(entry), options_);
  }

  std::string text(const TransferableLogEntry& entry) const {
    return options_.json ? printableJson(encodeJson(entry).value_or("{}")) + "\n"
                         : logLine(entry, terminal_);
  }

  std::string text(const TransferableNetworkRequest& exchange) const {
    if (options_.json) {
      return printableJson(encodeJson(exchange).value_or("{}")) + "\n";
    }
    return exchangeLine(exchange, terminal_) +
           (watch_.body ? exchangeDetails(exchange, terminal_) : "");
  }

  const CommandOptions& options_;
  const WatchOptions& watch_;
  const ExchangeFilter filter_;
  const Terminal terminal_;
  SeenRecords seen_;
  std::uint64_t shown_ = 0;
  ExitCode code_ = ExitCode::success;
};

}  // namespace

ExitCode runWatch(const CommandOptions& options, const WatchOptions& watch) {
  std::optional<ExchangeFilter> filter =
      ExchangeFilter::make(watch.hosts, watch.methods, watch.statuses);
  if (!filter) {
    return report(ExitCode::usage,
                  "a status is a code such as 404, a class such as 4xx, a range such as 200-299, "
                  "or \"error\".",
                  options);
  }
  return Watch(options, watch, *std::move(filter)).run();
}

}  // namespace tarnix::companion
