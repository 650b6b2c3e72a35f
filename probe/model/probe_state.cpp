#include "probe/model/probe_state.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "probe/model/user_default_description.h"
#include "probe/platform/main_thread.h"
#include "probe/platform/platform.h"

namespace tarnix {
namespace {

// Keys of the platform's own; what has none of these prefixes belongs to the host.
constexpr std::array<std::string_view, 7> platformPrefixes = {"Apple", "NS",     "com.apple", "AK",
                                                              "PK",    "INNext", "WebKit"};

bool isPlatformKey(std::string_view key) {
  return std::any_of(platformPrefixes.begin(), platformPrefixes.end(),
                     [key](std::string_view prefix) { return key.starts_with(prefix); });
}

std::vector<TransferableNetworkRequest> copiesOf(
    const std::vector<ProbeState::SharedRequest>& requests) {
  std::vector<TransferableNetworkRequest> copies;
  copies.reserve(requests.size());
  for (const ProbeState::SharedRequest& request : requests) {
    copies.push_back(*request);
  }
  return copies;
}

}  // namespace

ProbeState& ProbeState::shared() {
  static ProbeState& state = *new ProbeState;
  return state;
}

void ProbeState::addRequest(TransferableNetworkRequest request) {
  addSharedRequest(std::make_shared<const TransferableNetworkRequest>(std::move(request)));
}

void ProbeState::addSharedRequest(SharedRequest request) {
  // Declared first: what makes way is freed after the lock is.
  SharedRequest evicted;
  const std::lock_guard guard(lock_);
  evicted = httpRequests_.add(std::move(request));
}

void ProbeState::addLog(TransferableLogEntry entry) {
  TransferableLogEntry evicted;
  const std::lock_guard guard(lock_);
  evicted = logEntries_.add(std::move(entry));
}

std::vector<TransferableNetworkRequest> ProbeState::httpRequests() const {
  return copiesOf(sharedRequests());
}

std::vector<ProbeState::SharedRequest> ProbeState::sharedRequests() const {
  const std::lock_guard guard(lock_);
  return httpRequests_.all();
}

std::vector<TransferableLogEntry> ProbeState::logEntries() const {
  const std::lock_guard guard(lock_);
  return logEntries_.all();
}

std::vector<TransferableUserDefaultsEntry> ProbeState::userDefaults() const {
  const std::lock_guard guard(lock_);
  return userDefaults_;
}

std::vector<TransferableNetworkRequest> ProbeState::recentRequests() const {
  std::vector<SharedRequest> newest;
  {
    const std::lock_guard guard(lock_);
    newest = httpRequests_.newest(recentRequestCount);
  }
  return copiesOf(newest);
}

std::string ProbeState::currentScreen() const {
  const std::lock_guard guard(lock_);
  return currentScreen_;
}

void ProbeState::setScreen(std::string name) {
  const std::lock_guard guard(lock_);
  currentScreen_ = std::move(name);
}

void ProbeState::refreshUserDefaults() {
  platform::assertMainThread();
  std::vector<TransferableUserDefaultsEntry> entries;
  for (auto& [key, value] : platform::current().userDefaults->dictionaryRepresentation()) {
    if (isPlatformKey(key)) {
      continue;
    }
    UserDefaultDescription description = describeUserDefault(value);
    entries.push_back({.id = key,
                       .key = key,
                       .displayValue = std::move(description.displayValue),
                       .valueType = std::string(description.valueType)});
  }
  // UTF-8 sorts bytewise as Unicode scalar values do.
  std::stable_sort(entries.begin(), entries.end(),
                   [](const auto& left, const auto& right) { return left.key < right.key; });
  const std::lock_guard guard(lock_);
  userDefaults_.swap(entries);
}

void ProbeState::clear() {
  const std::lock_guard guard(lock_);
  httpRequests_.clear();
  logEntries_.clear();
  userDefaults_.clear();
  currentScreen_ = "Unknown";
}

}  // namespace tarnix
