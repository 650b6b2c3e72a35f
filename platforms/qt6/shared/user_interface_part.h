#pragma once

#include <QImage>
#include <QPointF>
#include <memory>

#include "platforms/qt6/shared/overlay_pane.h"
#include "platforms/qt6/shared/screen.h"
#include "platforms/qt6/shared/surroundings.h"
#include "probe/bootstrap/interposed_calls.h"
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

  /// Where its windows have their screens.
  virtual ScreenFinder& screens() = 0;

  /// `window` as it was last drawn, in pixels of the screen; null when it was not, or is none of
  /// this library's.
  virtual QImage lastImage(QWindow& window) = 0;

  /// The view in `window` that a touch at `point`, on the screen, reaches first, which acts at that
  /// point. `outer` is what the window stands in, null for one of its own. Null when the window
  /// shows nothing of this library or the touch goes through it.
  virtual std::shared_ptr<platform::View> touchedView(QWindow& window,
                                                      const Surroundings& surroundings,
                                                      QPointF point,
                                                      std::shared_ptr<platform::View> outer) = 0;

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

  /// The screens of such a window; false when no part knows it.
  virtual bool addScreens(QWindow& window, ScreenChain& chain) = 0;

  /// As the part that knows the window says.
  virtual QImage lastImage(QWindow& window) = 0;

  /// The same for a touch; see `UserInterfacePart`.
  virtual std::shared_ptr<platform::View> touchedView(QWindow& window,
                                                      const Surroundings& surroundings,
                                                      QPointF point,
                                                      std::shared_ptr<platform::View> outer) = 0;

  /// Null in a process that the preloaded library does not stand in front of.
  virtual InterposedCalls* interposedCalls() = 0;
};

/// The one symbol that a part exports. The part and `source` live as long as the process; never
/// null.
using UserInterfacePartEntry = UserInterfacePart* (*)(ViewSource* source);
inline constexpr const char* userInterfacePartEntryName = "tarnixprobe_qt6_part";

}  // namespace tarnix::qt6
