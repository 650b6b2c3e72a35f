#include "platforms/qt6/widgets/buddies.h"

#include <utility>

#include "platforms/qt6/widgets/widget_label.h"

namespace tarnix::qt6 {

std::shared_ptr<const Buddies> Buddies::collect(const QWidget& container,
                                                std::shared_ptr<const Buddies> outer) {
  std::shared_ptr<Buddies> own;
  for (const QObject* child : container.children()) {
    const auto* const label = qobject_cast<const QLabel*>(child);
    if (label == nullptr || label->buddy() == nullptr) {
      continue;
    }
    if (own == nullptr) {
      own = std::make_shared<Buddies>();
    }
    own->labels_.emplace(label->buddy(), label);
  }
  if (own == nullptr) {
    return outer;
  }
  own->outer_ = std::move(outer);
  return own;
}

QString Buddies::textFor(const Buddies* innermost, const QWidget& field) {
  for (const Buddies* buddies = innermost; buddies != nullptr; buddies = buddies->outer_.get()) {
    const auto found = buddies->labels_.find(&field);
    if (found != buddies->labels_.end() && found->second != nullptr) {
      return textOfLabel(*found->second).text;
    }
  }
  return {};
}

}  // namespace tarnix::qt6
