#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "probe/model/uuid.h"
#include "probe/network/url_matcher.h"
#include "probe/platform/text.h"
#include "probe/platform/url_request.h"

namespace tarnix {

/// Rules in the order in which they were added, and the first of them that matches a request.
/// `Rule` has the members `id`, `urlPattern`, `matchMode` and `httpMethod`.
///
/// Any thread. Lookups come from the host's own threads and search a snapshot that nobody changes,
/// so that neither they nor the companion's changes wait for somebody else's search. A change is
/// seen by every lookup that starts after it.
template <class Rule>
class RuleList {
 public:
  void add(Rule rule) {
    auto entry = std::make_shared<const Entry>(std::move(rule));
    // Declared before the guard: what is let go of goes after the lock.
    std::shared_ptr<const Entries> outdated;
    const std::lock_guard guard(lock_);
    rules_.push_back(std::move(entry));
    outdated = std::exchange(snapshot_, nullptr);
  }

  /// Removes every rule of that id.
  void remove(const Uuid& id) {
    Entries kept;
    std::shared_ptr<const Entries> outdated;
    const std::lock_guard guard(lock_);
    kept.reserve(rules_.size());
    for (const std::shared_ptr<const Entry>& entry : rules_) {
      if (entry->rule.id != id) {
        kept.push_back(entry);
      }
    }
    if (kept.size() != rules_.size()) {
      rules_.swap(kept);
      outdated = std::exchange(snapshot_, nullptr);
    }
  }

  std::optional<Rule> findMatch(const platform::UrlRequest& request) const {
    const std::shared_ptr<const Entries> entries = snapshot();
    if (entries == nullptr) {
      return std::nullopt;
    }
    const std::string_view url =
        request.url ? std::string_view(request.url->absoluteString()) : std::string_view();
    const std::string method = platform::uppercased(request.httpMethod.value_or("GET"));
    for (const std::shared_ptr<const Entry>& entry : *entries) {
      if (entry->matcher.matches(url, method)) {
        return entry->rule;
      }
    }
    return std::nullopt;
  }

 private:
  struct Entry {
    explicit Entry(Rule added)
        : rule(std::move(added)), matcher(rule.urlPattern, rule.matchMode, rule.httpMethod) {}

    const Rule rule;
    const UrlMatcher matcher;
  };
  using Entries = std::vector<std::shared_ptr<const Entry>>;

  /// Made by the first lookup after a change, so that many changes in a row cost one copy. Null
  /// when there are no rules.
  std::shared_ptr<const Entries> snapshot() const {
    const std::lock_guard guard(lock_);
    if (snapshot_ == nullptr && !rules_.empty()) {
      snapshot_ = std::make_shared<const Entries>(rules_);
    }
    return snapshot_;
  }

  mutable std::mutex lock_;
  Entries rules_;
  mutable std::shared_ptr<const Entries> snapshot_;
};

}  // namespace tarnix
