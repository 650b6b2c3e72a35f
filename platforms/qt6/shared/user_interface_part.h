#pragma once

#include <memory>

#include "platforms/qt6/shared/overlay_pane.h"
#include "platforms/qt6/shared/surroundings.h"
#include "probe/platform/view.h"

class QWindow;

namespace tarnix::qt6 {

/// How one of the toolkit's two user interface libraries becomes views. Each lives in a module of
/// its own, which is loaded only into hosts that have that library. Main thread.
class UserInterfacePart {
 public:
  virtual ~UserInterfacePart() = default;

  /// What `window` shows, as one view; null when it shows nothing of this library.
  virtual std::shared_ptr<platform::View> viewOf(QWindow& window,
                                                 const Surroundings& surroundings) = 0;

  /// Something to draw on over all that `window` shows; null when it shows nothing of this library.
  virtual std::unique_ptr<OverlayPane> makeOverlayPane(QWindow& window) {
    static_cast<void>(window);
    return nullptr;
  }
};

/// What a part asks of the base module.
class ViewSource {
 public:
  virtual ~ViewSource() = default;

  /// The view of a window that stands inside a view of another library; null when no part knows it.
  virtual std::shared_ptr<platform::View> viewOf(QWindow& window,
                                                 const Surroundings& surroundings) = 0;
};

/// The one symbol that a part exports. The part and `source` live as long as the process; never
/// null.
using UserInterfacePartEntry = UserInterfacePart* (*)(ViewSource* source);
inline constexpr const char* userInterfacePartEntryName = "tarnixprobe_qt6_part";

}  // namespace tarnix::qt6
