#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "probe/overlay/animation.h"
#include "probe/overlay/layer.h"

namespace tarnix::overlay {

/// The time of a tree of layers: starts animations and runs what is to happen when they are over.
/// One that is started by such a completion begins exactly when the earlier one ended, whenever the
/// frames come. Main thread. Completions that have not run go with the animator.
class Animator {
 public:
  struct Timing {
    double duration = 0;
    double delay = 0;
    TimingCurve curve = TimingCurve::easeInOut();
  };

  /// A value that a layer is to have in the end.
  struct Change {
    std::shared_ptr<Layer> layer;
    Property property;
    double value;
  };

  /// Takes each layer from what is seen of it now to its new value, which it has at once for
  /// everyone but the viewer. `completion` runs after delay and duration, changes or none.
  void animate(const Timing& timing, const std::vector<Change>& changes,
               std::function<void()> completion = {});

  /// Adds an animation by its key; the layer's own value stays as it is.
  void add(Layer& layer, const std::string& key, Animation animation) const;

  /// Runs the completions that are due up to `now`, in the order of their times. `now` never falls.
  void advance(Layer& root, double now);

  double now() const { return now_; }
  bool hasPendingCompletions() const { return !completions_.empty(); }

 private:
  struct Completion {
    /// Absent until the next frame.
    std::optional<double> due;
    double wait = 0;
    std::function<void()> closure;
  };

  std::vector<Completion>::iterator nextDue();

  double now_ = 0;
  /// Whether `now_` is the time of what is being done; between two frames it is not.
  bool isInsideFrame_ = false;
  /// In the order in which they were given.
  std::vector<Completion> completions_;
};

}  // namespace tarnix::overlay
