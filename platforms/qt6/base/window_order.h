#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

class QWindow;

namespace tarnix::qt6 {

/// Which of the host's windows a person sees, and which of them has the attention. Main thread.
class WindowOrder {
 public:
  static WindowOrder& shared();

  /// Starts noting which window was active last. Each time an application object is made.
  void start();

  /// The visible top-level windows, without popups.
  static QList<QWindow*> windows();

  /// The window with the focus, else the active modal one, else the one that was active last, else
  /// the newest. Null when there is none.
  QWindow* keyWindow() const;

  /// The menus, lists and tips that are open in front of the key window, back to front.
  static QList<QWindow*> popups();

 private:
  WindowOrder() = default;

  QPointer<QWindow> lastActive_;
};

/// Windows of ours bear this property and appear nowhere.
inline constexpr const char* ownWindowProperty = "_tarnixprobe_own";

}  // namespace tarnix::qt6
