#pragma once

namespace tarnix::platform {

/// How a view reacts to touch, without what it takes to act on it.
struct TouchReactions {
  /// Neither disabled nor something to look at only.
  bool isUserInteractionEnabled = false;
  /// It reacts to a press by itself; see `Control`.
  bool isControl = false;
  /// It has a gesture recognizer of some kind. Of a control that need not be told.
  bool hasGestureRecognizers = false;
};

}  // namespace tarnix::platform
