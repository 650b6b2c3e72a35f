#include <fmt/format.h>

#include <chrono>
#include <cstdio>
#include <thread>
#include <utility>
#include <vector>

#include "companion/command/host_session.h"
#include "companion/command/log_text.h"
#include "companion/command/runtime_commands.h"
#include "companion/command/seen_records.h"
#include "companion/command/standard_output.h"
#include "companion/output/display_text.h"
#include "probe/link/json_codec.h"
#include "probe/model/full_sync_payload.h"

namespace tarnix::companion {
namespace {

using namespace std::chrono_literals;
using Entries = std::vector<TransferableLogEntry>;

/// Another command of the user's may be using the application for a moment; this one gives way.
constexpr auto pauseAfterLoss = 700ms;

class Logs {
 public:
  Logs(const CommandOptions& options, const LogsOptions& logs)
      : options_(options), logs_(logs), terminal_(Terminal::standardOutput(options.noColor)) {}

  ExitCode run() {
    std::variant<HostSession, ExitCode> session = open();
    if (const ExitCode* code = std::get_if<ExitCode>(&session)) {
      return *code;
    }
    HostSession host = std::get<HostSession>(std::move(session));
    showSync(host.client.fullSync(), logs_.newest);
    if (shown_ == 0 && code_ == ExitCode::success) {
      saySilence();
    }
    while (logs_.follow && !isOver()) {
      Outcome<CompanionMessage> message = host.client.receive(deadlineIn(1h));
      if (message) {
        showEvent(*message);
        continue;
      }
      if (message.error().kind == ClientError::Kind::notUnderstood) {
        return report(message.error(), options_);
      }
      if (message.error().kind != ClientError::Kind::noAnswer) {
        std::this_thread::sleep_for(pauseAfterLoss);
        // What was written meanwhile comes with the sync.
        Outcome<CompanionClient> client = CompanionClient::connect(
            {options_.host, host.target.port}, deadlineIn(options_.timeout()));
        if (!client) {
          return report(
              client.error().kind == ClientError::Kind::unreachable
                  ? ClientError{ClientError::Kind::unreachable, "the application has ended."}
                  : client.error(),
              options_);
        }
        host.client = std::move(*client);
        showSync(host.client.fullSync(), 0);
      }
    }
    return code_;
  }

 private:
  std::variant<HostSession, ExitCode> open() const {
    return openSession(options_, deadlineIn(options_.timeout()));
  }

  bool isOver() const {
    return code_ != ExitCode::success || (logs_.count != 0 && shown_ >= logs_.count);
  }

  /// Beside the lines, so that these stay clean for programs.
  void saySilence() const {
    const std::string reason = captured_ == 0 ? "the application has written nothing to its log yet"
                                              : fmt::format("none of its {} lines fits", captured_);
    fmt::print(stderr, "{}\n",
               Terminal::standardError(options_.noColor).styled("-- " + reason, Style::quiet));
  }

  /// At most `newest` of the lines that fit; 0: all. Lines that were shown before are not again.
  void showSync(const CompanionMessage& message, std::uint64_t newest) {
    const std::optional<FullSyncPayload> sync = message.decode<FullSyncPayload>();
    if (!sync) {
      code_ = report(ExitCode::notUnderstood,
                     "the full sync was not understood. Are `tarnix` and the probe of one version?",
                     options_);
      return;
    }
    captured_ = sync->logEntries.size();
    Entries fitting;
    for (const TransferableLogEntry& entry : sync->logEntries) {
      if (seen_.note(entry.id) && logs_.filter.fits(entry)) {
        fitting.push_back(entry);
      }
    }
    const std::size_t skipped =
        newest != 0 && fitting.size() > newest ? fitting.size() - newest : 0;
    for (std::size_t index = skipped; index < fitting.size(); ++index) {
      show(fitting[index]);
    }
  }

  void showEvent(const CompanionMessage& message) {
    if (message.type != CompanionMessageType::eventLog) {
      return;
    }
    const std::optional<TransferableLogEntry> entry = message.decode<TransferableLogEntry>();
    if (entry && seen_.note(entry->id) && logs_.filter.fits(*entry)) {
      show(*entry);
    }
  }

  void show(const TransferableLogEntry& entry) {
    if (isOver()) {
      return;
    }
    ++shown_;
    code_ =
        writeToStandardOutput(options_.json ? printableJson(encodeJson(entry).value_or("{}")) + "\n"
                                            : logLine(entry, terminal_),
                              options_);
  }

  const CommandOptions& options_;
  const LogsOptions& logs_;
  const Terminal terminal_;
  SeenRecords seen_;
  /// By the probe, at the last sync.
  std::size_t captured_ = 0;
  std::uint64_t shown_ = 0;
  ExitCode code_ = ExitCode::success;
};

}  // namespace

ExitCode runLogs(const CommandOptions& options, const LogsOptions& logs) {
  return Logs(options, logs).run();
}

}  // namespace tarnix::companion
