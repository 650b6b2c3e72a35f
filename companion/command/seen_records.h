#pragma once

#include <cstddef>
#include <deque>
#include <set>

#include "probe/model/uuid.h"

namespace tarnix::companion {

/// What was shown, so that a record that comes as an event and again in a full sync is shown once.
/// Takes bounded room however long it is asked.
class SeenRecords {
 public:
  /// Whether it is new.
  bool note(const Uuid& id) {
    if (!ids_.insert(id).second) {
      return false;
    }
    order_.push_back(id);
    if (order_.size() > limit) {
      ids_.erase(order_.front());
      order_.pop_front();
    }
    return true;
  }

 private:
  /// The probe keeps 500 exchanges and as many lines; older ones do not come back.
  static constexpr std::size_t limit = 4'000;

  std::set<Uuid> ids_;
  std::deque<Uuid> order_;
};

}  // namespace tarnix::companion
