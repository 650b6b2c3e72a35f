#include "platforms/qt6/base/screen_history.h"

#include <algorithm>
#include <utility>

namespace tarnix::qt6 {

namespace {

bool holds(const ScreenChain& chain, const QObject* object) {
  return std::any_of(chain.begin(), chain.end(),
                     [object](const Screen& screen) { return screen.object == object; });
}

}  // namespace

void ScreenHistory::forget() { *this = ScreenHistory(); }

void ScreenHistory::noteExchange(const ScreenChain& chain) {
  const auto [before, now] =
      std::mismatch(chain_.begin(), chain_.end(), chain.begin(), chain.end(),
                    [](const Screen& left, const Screen& right) {
                      return left.object == right.object && left.object != nullptr;
                    });
  // In the first place that differs: what stands further inside came and went with it.
  if (now != chain.begin() && before != chain_.end() && now != chain.end() && !before->isCertain &&
      !now->isCertain) {
    exchanged_ = now->object;
  }
}

const Screen* ScreenHistory::current() const {
  for (auto screen = chain_.rbegin(); screen != chain_.rend(); ++screen) {
    if (screen->isCertain || (exchanged_ != nullptr && screen->object == exchanged_)) {
      return &*screen;
    }
  }
  return nullptr;
}

ScreenChain ScreenHistory::appeared(ScreenChain chain) {
  noteExchange(chain);
  const ScreenChain before = std::exchange(chain_, std::move(chain));
  const Screen* const now = current();
  if (now == nullptr) {
    named_.clear();
    return {};
  }
  if (named_ != nullptr && now->object == named_ && now->title == title_) {
    return {};
  }
  named_ = now->object;
  title_ = now->title;
  ScreenChain result;
  const Screen* enclosing = nullptr;
  for (const Screen& screen : chain_) {
    if (&screen == now) {
      break;
    }
    if (screen.isCertain && !holds(before, screen.object)) {
      result.push_back(screen);
    }
    if (screen.isCertain && !screen.isToolkits) {
      enclosing = &screen;
    }
  }
  // A page that is nothing but a box of the toolkit's leaves the screen around it on view.
  if (now->isToolkits && enclosing != nullptr && !holds(result, enclosing->object)) {
    result.push_back(*enclosing);
  }
  result.push_back(*now);
  return result;
}

}  // namespace tarnix::qt6
