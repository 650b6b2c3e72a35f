#pragma once

#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "probe/link/record.h"
#include "probe/model/tarnix_flow.h"
#include "probe/model/transferable_environment_state.h"
#include "probe/model/transferable_keychain_entry.h"
#include "probe/model/transferable_log_entry.h"
#include "probe/model/transferable_network_request.h"
#include "probe/model/transferable_qa_state.h"
#include "probe/model/transferable_rules_state.h"
#include "probe/model/transferable_user_defaults_entry.h"
#include "probe/model/transferable_ws_connection.h"

namespace tarnix {

/// Everything that the probe holds, and a description of the host: the first message of every
/// connection. Sections that the probe never fills are sent empty.
struct FullSyncPayload {
  /// Oldest first.
  std::vector<TransferableNetworkRequest> httpRequests;
  std::vector<TransferableWSConnection> wsConnections;
  /// Oldest first.
  std::vector<TransferableLogEntry> logEntries;
  TransferableEnvironmentState environmentState;
  TransferableRulesState rulesState;
  TransferableQAState qaState;
  /// Sorted by key.
  std::vector<TransferableUserDefaultsEntry> userDefaultsEntries;
  std::vector<TransferableKeychainEntry> keychainEntries;
  std::string currentScreen;
  std::string deviceName;
  std::string appName;
  /// Version and build, as in "2.4.1 (318)".
  std::string appVersion;
  std::optional<std::vector<TarnixFlow>> recordedFlows;

  bool operator==(const FullSyncPayload&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"httpRequests", &FullSyncPayload::httpRequests},
                      Field{"wsConnections", &FullSyncPayload::wsConnections},
                      Field{"logEntries", &FullSyncPayload::logEntries},
                      Field{"environmentState", &FullSyncPayload::environmentState},
                      Field{"rulesState", &FullSyncPayload::rulesState},
                      Field{"qaState", &FullSyncPayload::qaState},
                      Field{"userDefaultsEntries", &FullSyncPayload::userDefaultsEntries},
                      Field{"keychainEntries", &FullSyncPayload::keychainEntries},
                      Field{"currentScreen", &FullSyncPayload::currentScreen},
                      Field{"deviceName", &FullSyncPayload::deviceName},
                      Field{"appName", &FullSyncPayload::appName},
                      Field{"appVersion", &FullSyncPayload::appVersion},
                      Field{"recordedFlows", &FullSyncPayload::recordedFlows}};
  }
};

}  // namespace tarnix
