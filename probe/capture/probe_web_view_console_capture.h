#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

/// What the pages in the host's web views write to their consoles. Every web view that the host
/// makes is given a script which wraps four of the console's functions and posts each call to
/// `ProbeConsoleHandler`. Nothing is sent unasked.
namespace tarnix::ProbeWebViewConsoleCapture {

inline constexpr std::size_t maximumEntries = 200;

struct ConsoleEntry {
  /// Since 1970-01-01 00:00:00 UTC.
  std::chrono::duration<double> timestamp{};
  /// "log", "error", "warn" or "debug".
  std::string level;
  std::string message;
  /// The address of the page.
  std::optional<std::string> url;

  bool operator==(const ConsoleEntry&) const = default;
};

/// Puts the script into every web view that is made from now on. Without a word: it comes before
/// `install`, since a page that is there from the start has written its first lines by then.
/// Further calls do nothing. Main thread.
void exchangeInitialisers();

/// Does so too, and says how it went. Further calls do nothing. Main thread.
void install();

/// Keeps the newest `maximumEntries`. Any thread.
void addEntry(ConsoleEntry entry);

/// A copy, oldest first. Any thread.
std::vector<ConsoleEntry> entries();

/// Forgets what was captured, exchanged and said. For tests, which replace the platform.
void forgetInstallation();

}  // namespace tarnix::ProbeWebViewConsoleCapture
