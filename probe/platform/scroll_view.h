#pragma once

#include "probe/platform/geometry.h"

namespace tarnix::platform {

/// What shows a part of a larger content. Main thread.
class ScrollView {
 public:
  virtual ~ScrollView() = default;

  /// What of the content stands at the view's top left corner.
  virtual Point contentOffset() const = 0;
  /// Moves there with the platform's own animation, also past the content's ends where the platform
  /// allows that.
  virtual void setContentOffsetAnimated(Point offset) = 0;
};

}  // namespace tarnix::platform
