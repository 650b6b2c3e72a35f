#include "probe/capture/probe_log_capture.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "probe/capture/line_buffer.h"
#include "probe/capture/log_line.h"
#include "probe/capture/probelog.h"
#include "probe/link/companion_message.h"
#include "probe/link/probe_server.h"
#include "probe/model/probe_state.h"
#include "probe/model/transferable_log_entry.h"
#include "probe/model/utf8.h"
#include "probe/platform/main_thread.h"
#include "probe/platform/now.h"
#include "probe/platform/standard_error.h"

namespace tarnix::ProbeLogCapture {
namespace {

using Entries = std::vector<TransferableLogEntry>;

using detail::waitingEvents;

constexpr std::string_view ownMark = "[TarnixProbe]";

bool isRecorded(std::string_view line) {
  return !line.empty() && line.find(ownMark) == std::string_view::npos && utf8::isWellFormed(line);
}

TransferableLogEntry entryFor(std::string_view line, Timestamp now, const std::string& screen) {
  const LogLine parsed = LogLine::parse(line);
  TransferableLogEntry entry;
  entry.id = Uuid::random();
  entry.timestamp = now;
  entry.level = parsed.level;
  entry.category = parsed.category;
  entry.message = parsed.message;
  entry.screenName = screen;
  return entry;
}

/// Entries for the last `count` of these lines that are recorded; oldest first.
Entries newestEntries(const std::vector<std::string_view>& lines, std::size_t count) {
  const Timestamp now = platform::now();
  const std::string screen = ProbeState::shared().currentScreen();
  Entries entries;
  entries.reserve(std::min(lines.size(), count));
  for (auto line = lines.rbegin(); line != lines.rend() && entries.size() < count; ++line) {
    if (isRecorded(*line)) {
      entries.push_back(entryFor(*line, now, screen));
    }
  }
  std::reverse(entries.begin(), entries.end());
  return entries;
}

/// Main thread. Nothing comes back from the companion while this runs: once one entry has found no
/// room, no later one does, and none of them needs to be encoded.
void sendEvents(const Entries& entries) {
  ProbeServer& server = ProbeServer::shared();
  for (const TransferableLogEntry& entry : entries) {
    if (!server.hasRoom(CompanionMessageType::eventLog)) {
      return;
    }
    std::optional<CompanionMessage> message =
        CompanionMessage::make(CompanionMessageType::eventLog, entry, platform::now());
    if (message) {
      server.send(*std::move(message));
    }
  }
}

void postEvents(Entries entries) {
  const auto count = static_cast<std::int64_t>(entries.size());
  if (waitingEvents + count > maxWaitingEvents) {
    return;
  }
  waitingEvents += count;
  platform::current().mainQueue->async([entries = std::move(entries), count] {
    waitingEvents -= count;
    try {
      sendEvents(entries);
    } catch (...) {
      // Out of memory: the entries are stored, and the next companion gets them with its sync.
    }
  });
}

/// Lives on the thread that reads the stream.
class LogReader {
 public:
  static LogReader& shared() {
    static LogReader& reader = *new LogReader;
    return reader;
  }

  void take(std::string_view piece) {
    const std::vector<std::string_view>& lines = buffer_.take(piece);
    if (lines.empty()) {
      return;
    }
    // Of many lines at once all but the newest would leave the store again at once; they count for
    // events only, and there are none while nobody is connected.
    const ProbeServer& server = ProbeServer::shared();
    Entries entries =
        newestEntries(lines, server.isConnected() ? lines.size() : ProbeState::capacity);
    const std::size_t skipped = entries.size() - std::min(entries.size(), ProbeState::capacity);
    for (std::size_t index = skipped; index < entries.size(); ++index) {
      ProbeState::shared().addLog(entries[index]);
    }
    // Asked again, and after storing: a companion that connects in between finds in its sync what
    // is not sent as an event.
    if (server.isConnected() && !entries.empty()) {
      postEvents(std::move(entries));
    }
  }

 private:
  LineBuffer buffer_;
};

void readPiece(std::string_view piece) {
  try {
    LogReader::shared().take(piece);
  } catch (...) {
    // Out of memory: these lines are lost as entries. They were passed on.
  }
}

}  // namespace

void install() {
  platform::assertMainThread();
  if (detail::hasInstalled) {
    return;
  }
  detail::hasInstalled = true;
  const std::optional<int> original = platform::divertStandardError(readPiece);
  if (!original) {
    return;
  }
  probelogfd = *original;
  probelog("[TarnixProbe] Log capture installed\n");
}

}  // namespace tarnix::ProbeLogCapture
