#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace tarnix {

/// Elements that were seen before: an open hash table of positions in the list, so that telling ten
/// thousand elements apart costs one allocation. `Identity` says by `hash(element)` and
/// `isSame(left, right)` what makes two of them one.
template <class Identity, class Element>
class SeenElements {
 public:
  explicit SeenElements(const std::vector<Element>& elements) : elements_(elements) {
    std::size_t size = 16;
    while (size < elements.size() * 2) {
      size *= 2;
    }
    slots_.assign(size, empty);
  }

  /// Whether none that is the same was added before.
  bool add(std::size_t position) {
    const Element& element = elements_[position];
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t slot = Identity::hash(element) & mask;; slot = (slot + 1) & mask) {
      if (slots_[slot] == empty) {
        slots_[slot] = position;
        return true;
      }
      if (Identity::isSame(elements_[slots_[slot]], element)) {
        return false;
      }
    }
  }

 private:
  static constexpr std::size_t empty = static_cast<std::size_t>(-1);

  const std::vector<Element>& elements_;
  std::vector<std::size_t> slots_;
};

/// Of those that are the same the first, from top to bottom by their frames; those at the same
/// height in the order that they come in. What is sorted are places in the list: an element is many
/// times as large.
template <class Identity, class Element>
std::vector<Element> distinctFromTopToBottom(std::vector<Element> elements) {
  struct Rank {
    double minY;
    std::size_t position;
  };
  std::vector<Rank> ranks;
  ranks.reserve(elements.size());
  SeenElements<Identity, Element> seen(elements);
  for (std::size_t position = 0; position < elements.size(); ++position) {
    if (seen.add(position)) {
      ranks.push_back({elements[position].frame.minY(), position});
    }
  }
  // Positions rise, so comparing them second is what keeps equal heights in their order.
  std::sort(ranks.begin(), ranks.end(), [](const Rank& left, const Rank& right) {
    return left.minY != right.minY ? left.minY < right.minY : left.position < right.position;
  });
  std::vector<Element> result;
  result.reserve(ranks.size());
  for (const Rank& rank : ranks) {
    result.push_back(std::move(elements[rank.position]));
  }
  return result;
}

}  // namespace tarnix
