#pragma once

#include <QLabel>
#include <QPointer>
#include <memory>
#include <unordered_map>

namespace tarnix::qt6 {

/// The labels that stand beside fields and belong to them, of one container and those around it.
/// Main thread.
class Buddies {
 public:
  /// With the labels among the children of `container`; `outer` itself when there are none.
  static std::shared_ptr<const Buddies> collect(const QWidget& container,
                                                std::shared_ptr<const Buddies> outer);

  /// The label's text as it is shown; empty when `field` has no label.
  static QString textFor(const Buddies* innermost, const QWidget& field);

 private:
  std::shared_ptr<const Buddies> outer_;
  std::unordered_map<const QWidget*, QPointer<const QLabel>> labels_;
};

}  // namespace tarnix::qt6
