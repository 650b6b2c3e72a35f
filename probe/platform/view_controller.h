#pragma once

#include <optional>
#include <string>

#include "probe/platform/exchangeable_method.h"

namespace tarnix::platform {

/// What stands behind one screen of the host. Main thread.
class ViewController {
 public:
  virtual ~ViewController() = default;

  /// The dynamic class, unqualified, with its generic arguments as in "UIHostingController<Shop>".
  virtual std::string className() const = 0;
  virtual std::optional<std::string> title() const = 0;
  /// Where the class comes from: the folder of the library or application that holds it.
  virtual std::string bundlePath() const = 0;
};

/// What runs each time that a screen has appeared: the controller, and whether it came with an
/// animation. On the main thread. A host whose screens cannot be told offers none.
using ViewDidAppear = ExchangeableMethod<void(ViewController& controller, bool animated)>;

}  // namespace tarnix::platform
