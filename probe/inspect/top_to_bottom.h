#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace tarnix {

/// The elements whose position `isKept` accepts, from top to bottom by their frames; those at the
/// same height in the order that they come in. `isKept` is asked for each once, in that order.
/// What is sorted are places in the list: an element is many times as large.
template <class Element, class IsKept>
std::vector<Element> fromTopToBottom(std::vector<Element>&& elements, const IsKept& isKept) {
  struct Rank {
    double minY;
    std::size_t position;
  };
  std::vector<Rank> ranks;
  ranks.reserve(elements.size());
  for (std::size_t position = 0; position < elements.size(); ++position) {
    if (isKept(position)) {
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
