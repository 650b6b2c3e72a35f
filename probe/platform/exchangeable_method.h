#pragma once

#include <functional>
#include <mutex>
#include <utility>

namespace tarnix::platform {

template <class Signature>
class ExchangeableMethod;

/// A method of the host's platform whose implementation can be read and replaced while it is in
/// use. Any thread; a call that has begun ends in the implementation that it began with.
template <class Result, class... Arguments>
class ExchangeableMethod<Result(Arguments...)> {
 public:
  using Implementation = std::function<Result(Arguments...)>;

  /// `whenReplaced` is called after each replacement, by whoever makes it: a host that has to look
  /// for the moments to call the method at begins then.
  explicit ExchangeableMethod(Implementation implementation,
                              std::function<void()> whenReplaced = {})
      : implementation_(std::move(implementation)), whenReplaced_(std::move(whenReplaced)) {}

  ExchangeableMethod(const ExchangeableMethod&) = delete;
  ExchangeableMethod& operator=(const ExchangeableMethod&) = delete;

  Result operator()(Arguments... arguments) const {
    return implementation()(std::forward<Arguments>(arguments)...);
  }

  Implementation implementation() const {
    const std::lock_guard guard(lock_);
    return implementation_;
  }

  void setImplementation(Implementation implementation) {
    {
      const std::lock_guard guard(lock_);
      implementation_.swap(implementation);
    }
    if (whenReplaced_) {
      whenReplaced_();
    }
  }

  /// Each takes the other's implementation. Exchanges of the same methods are made one at a time.
  static void exchangeImplementations(ExchangeableMethod& one, ExchangeableMethod& other) {
    Implementation ofOne = one.implementation();
    one.setImplementation(other.implementation());
    other.setImplementation(std::move(ofOne));
  }

 private:
  mutable std::mutex lock_;
  Implementation implementation_;
  const std::function<void()> whenReplaced_;
};

}  // namespace tarnix::platform
