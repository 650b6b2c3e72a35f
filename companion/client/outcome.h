#pragma once

#include <optional>
#include <utility>
#include <variant>

#include "companion/client/companion_error.h"

namespace tarnix::companion {

/// Either what was asked for, or why it could not be had.
template <class T>
class Outcome {
 public:
  Outcome(T value) : content_(std::move(value)) {}
  Outcome(CompanionError error) : content_(std::move(error)) {}

  explicit operator bool() const { return content_.index() == 0; }

  /// Only of an outcome that is true.
  T& operator*() { return std::get<0>(content_); }
  const T& operator*() const { return std::get<0>(content_); }
  T* operator->() { return &std::get<0>(content_); }
  const T* operator->() const { return &std::get<0>(content_); }

  /// Only of an outcome that is false.
  const CompanionError& error() const { return std::get<1>(content_); }

 private:
  std::variant<T, CompanionError> content_;
};

/// Of an operation that has nothing to give: the reason of its failure, or nothing.
using Failure = std::optional<CompanionError>;

}  // namespace tarnix::companion
