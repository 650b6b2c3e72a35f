#pragma once

namespace tarnix::platform {

/// What a view does on a gesture of one kind. Main thread.
class GestureRecognizer {
 public:
  virtual ~GestureRecognizer() = default;

  virtual bool isTap() const = 0;
  /// Makes it act as on a gesture that has come to its end.
  virtual void setEnded() = 0;
};

}  // namespace tarnix::platform
