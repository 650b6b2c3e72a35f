#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace tarnix {

/// The newest `bound` values that were added. Adding costs the same however full the list is: the
/// storage is a ring. Not synchronised.
template <class T, std::size_t bound>
class BoundedList {
 public:
  /// Returns the value that had to make way, or an empty one, so that the caller may let go of it
  /// where that costs nobody else anything.
  T add(T value) {
    if (ring_.size() < bound) {
      ring_.push_back(std::move(value));
      return T{};
    }
    std::swap(ring_[oldest_], value);
    oldest_ = (oldest_ + 1) % bound;
    return value;
  }

  /// The last `count` values, or all when there are fewer; oldest first.
  std::vector<T> newest(std::size_t count) const {
    const std::size_t skipped = count < ring_.size() ? ring_.size() - count : 0;
    std::vector<T> values;
    values.reserve(ring_.size() - skipped);
    for (std::size_t index = skipped; index < ring_.size(); ++index) {
      values.push_back(ring_[(oldest_ + index) % ring_.size()]);
    }
    return values;
  }

  /// Oldest first.
  std::vector<T> all() const { return newest(ring_.size()); }

  void clear() {
    ring_.clear();
    oldest_ = 0;
  }

 private:
  std::vector<T> ring_;
  std::size_t oldest_ = 0;
};

}  // namespace tarnix
