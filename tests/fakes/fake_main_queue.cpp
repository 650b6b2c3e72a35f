#include "tests/fakes/fake_main_queue.h"

namespace tarnix::fakes {

struct FakeMainQueue::Ticking {
  Nanoseconds interval;
  Closure closure;
  Nanoseconds nextTime{0};
  bool isRunning = true;
};

class FakeMainQueue::FakeTimer : public platform::Timer {
 public:
  FakeTimer(FakeMainQueue& queue, std::shared_ptr<Ticking> ticking)
      : queue_(queue), ticking_(std::move(ticking)) {}
  FakeTimer(const FakeTimer&) = delete;
  FakeTimer& operator=(const FakeTimer&) = delete;
  ~FakeTimer() override {
    const std::lock_guard guard(queue_.mutex_);
    ticking_->isRunning = false;
  }

 private:
  FakeMainQueue& queue_;
  std::shared_ptr<Ticking> ticking_;
};

void FakeMainQueue::async(Closure closure) {
  const std::lock_guard guard(mutex_);
  ready_.push_back(std::move(closure));
}

void FakeMainQueue::asyncAfter(Nanoseconds delay, Closure closure) {
  const std::lock_guard guard(mutex_);
  scheduled_.emplace(now_ + delay, std::move(closure));
}

std::unique_ptr<platform::Timer> FakeMainQueue::scheduledTimer(Nanoseconds interval,
                                                               Closure closure) {
  auto ticking = std::make_shared<Ticking>();
  ticking->interval = interval;
  ticking->closure = std::move(closure);
  {
    const std::lock_guard guard(mutex_);
    ticking->nextTime = now_ + interval;
    scheduleTick(ticking);
  }
  return std::make_unique<FakeTimer>(*this, std::move(ticking));
}

void FakeMainQueue::scheduleTick(const std::shared_ptr<Ticking>& ticking) {
  scheduled_.emplace(ticking->nextTime, [this, ticking] {
    {
      const std::lock_guard guard(mutex_);
      if (!ticking->isRunning) {
        return;
      }
      ticking->nextTime += ticking->interval;
      scheduleTick(ticking);
    }
    ticking->closure();
  });
}

bool FakeMainQueue::popReady(Closure& closure) {
  const std::lock_guard guard(mutex_);
  if (ready_.empty()) {
    return false;
  }
  closure = std::move(ready_.front());
  ready_.pop_front();
  return true;
}

bool FakeMainQueue::popDue(Nanoseconds limit, Closure& closure) {
  const std::lock_guard guard(mutex_);
  const auto first = scheduled_.begin();
  if (first == scheduled_.end() || first->first > limit) {
    now_ = limit;
    return false;
  }
  now_ = first->first;
  closure = std::move(first->second);
  scheduled_.erase(first);
  return true;
}

bool FakeMainQueue::runReady() {
  bool anyRan = false;
  Closure closure;
  while (popReady(closure)) {
    closure();
    anyRan = true;
  }
  return anyRan;
}

void FakeMainQueue::advance(Nanoseconds duration) {
  runReady();
  const Nanoseconds limit = now_ + duration;
  Closure closure;
  while (popDue(limit, closure)) {
    closure();
    runReady();
  }
}

std::size_t FakeMainQueue::scheduledCount() const {
  const std::lock_guard guard(mutex_);
  return scheduled_.size();
}

}  // namespace tarnix::fakes
