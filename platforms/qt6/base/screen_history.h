#pragma once

#include "platforms/qt6/shared/screen.h"

namespace tarnix::qt6 {

/// Tells from what was on view before and what is now which screens have appeared. Main thread.
///
/// Of what is certain to be a screen the innermost one counts; coming back to it, when a dialog
/// closes or a page is taken away, counts too. Applications that swap pages in ways of their own
/// show something that is not certain: it counts from the moment that it takes the place of
/// another.
class ScreenHistory {
 public:
  /// The screens that have appeared, the one that is on view now last; empty when that is the same
  /// as before. An empty chain: nothing is on view.
  ScreenChain appeared(ScreenChain chain);

  void forget();

 private:
  const Screen* current() const;
  void noteExchange(const ScreenChain& chain);

  ScreenChain chain_;
  /// What took the place of another, while it is on view.
  QPointer<QObject> exchanged_;
  QPointer<QObject> named_;
  QString title_;
};

}  // namespace tarnix::qt6
