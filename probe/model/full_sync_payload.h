#pragma once

#include <memory>
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
/// connection. Sections that the probe never fills are sent empty. `Request` is an exchange, or
/// what points at one.
template <class Request>
struct FullSync {
  /// Oldest first.
  std::vector<Request> httpRequests;
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

  bool operator==(const FullSync&) const = default;

  static constexpr auto fields() {
    return std::tuple{Field{"httpRequests", &FullSync::httpRequests},
                      Field{"wsConnections", &FullSync::wsConnections},
                      Field{"logEntries", &FullSync::logEntries},
                      Field{"environmentState", &FullSync::environmentState},
                      Field{"rulesState", &FullSync::rulesState},
                      Field{"qaState", &FullSync::qaState},
                      Field{"userDefaultsEntries", &FullSync::userDefaultsEntries},
                      Field{"keychainEntries", &FullSync::keychainEntries},
                      Field{"currentScreen", &FullSync::currentScreen},
                      Field{"deviceName", &FullSync::deviceName},
                      Field{"appName", &FullSync::appName},
                      Field{"appVersion", &FullSync::appVersion},
                      Field{"recordedFlows", &FullSync::recordedFlows}};
  }
};

using FullSyncPayload = FullSync<TransferableNetworkRequest>;

/// The same to send: the exchanges stay where they are in the store.
using OutgoingFullSync = FullSync<std::shared_ptr<const TransferableNetworkRequest>>;

}  // namespace tarnix
