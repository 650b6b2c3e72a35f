#pragma once

#include <optional>
#include <utility>
#include <variant>

#include "companion/client/client_error.h"

namespace tarnix::companion {

/// Either what was asked for, or why it could not be had.
template <class T>
class Outcome {
 public:
  Outcome(T value) : content_(std::move(value)) {}
  Outcome(ClientError error) : content_(std::move(error)) {}

  explicit operator bool() const { return content_.index() == 0; }

  /// Only of an outcome that is true.
  T& operator*() { return std::get<0>(content_); }
  const T& operator*() const { return std::get<0>(content_); }
  T* operator->() { return &std::get<0>(content_); }
  const T* operator->() const { return &std::get<0>(content_); }

  /// Only of an outcome that is false.
  const ClientError& error() const { return std::get<1>(content_); }

 private:
  std::variant<T, ClientError> content_;
};

/// Of an operation that has nothing to give: the reason of its failure, or nothing.
using Failure = std::optional<ClientError>;

}  // namespace tarnix::companion
