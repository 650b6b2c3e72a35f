#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "probe/model/bounded_list.h"
#include "probe/model/transferable_log_entry.h"
#include "probe/model/transferable_network_request.h"
#include "probe/model/transferable_user_defaults_entry.h"

namespace tarnix {

/// The probe's memory of what it has captured. It only stores: whoever captures also sends.
///
/// Any thread, except for `refreshUserDefaults`. One mutex guards everything; each operation holds
/// it for its own work, calls nobody while it does, and hands out copies,
/// or what does not change.
class ProbeState {
 public:
  /// Requests that are kept, and log entries that are kept.
  static constexpr std::size_t capacity = 500;
  static constexpr std::size_t recentRequestCount = 5;

  /// The store of the process, made on first use and never destroyed.
  static ProbeState& shared();

  using SharedRequest = std::shared_ptr<const TransferableNetworkRequest>;

  /// Nobody changes the request any more: the store hands out the very same.
  void addSharedRequest(SharedRequest request);
  void addRequest(TransferableNetworkRequest request);
  void addLog(TransferableLogEntry entry);

  /// Oldest first.
  std::vector<TransferableNetworkRequest> httpRequests() const;
  /// The same without copying them.
  std::vector<SharedRequest> sharedRequests() const;
  /// Oldest first.
  std::vector<TransferableLogEntry> logEntries() const;
  /// Sorted by key; as of the last refresh.
  std::vector<TransferableUserDefaultsEntry> userDefaults() const;
  /// The last five requests, or all when there are fewer; oldest first.
  std::vector<TransferableNetworkRequest> recentRequests() const;

  /// "Unknown" before the first screen.
  std::string currentScreen() const;
  void setScreen(std::string name);

  /// Takes a new snapshot of the host's own settings. Main thread.
  void refreshUserDefaults();

  /// Empties the three lists and forgets the screen.
  void clear();

 private:
  mutable std::mutex lock_;
  BoundedList<SharedRequest, capacity> httpRequests_;
  BoundedList<TransferableLogEntry, capacity> logEntries_;
  std::vector<TransferableUserDefaultsEntry> userDefaults_;
  std::string currentScreen_ = "Unknown";
};

}  // namespace tarnix
