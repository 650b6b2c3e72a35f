#include "platforms/qt6/widgets/picture_watch.h"

#include <QApplication>
#include <QBackingStore>
#include <QThread>
#include <QWidget>
#include <algorithm>

namespace tarnix::qt6 {

namespace {

/// More than an application has windows at a time; menus and tool tips are windows that come and
/// go.
constexpr std::size_t mostStores = 64;

}  // namespace

PictureWatch& PictureWatch::shared() {
  static PictureWatch& instance = *new PictureWatch;
  return instance;
}

void PictureWatch::start(InterposedCalls& calls) {
  hasStarted_ = true;
  calls.pictureChanges.store(&PictureWatch::tell, std::memory_order_release);
}

QRegion PictureWatch::outdated(const QBackingStore& store) const {
  if (QGuiApplication::platformName() != QLatin1String("xcb")) {
    return {};
  }
  const auto known = outdated_.find(&store);
  return known == outdated_.end() ? QRegion(QRect(QPoint(0, 0), store.size())) : known->second;
}

void PictureWatch::add(PictureObserver& observer) { observers_.push_back(&observer); }

void PictureWatch::remove(PictureObserver& observer) { std::erase(observers_, &observer); }

void PictureWatch::tell(const PictureChange& change) noexcept {
  const QCoreApplication* const application = QCoreApplication::instance();
  // Widgets are painted on the main thread; what another paints is a picture of the host's own.
  if (application == nullptr || QThread::currentThread() != application->thread()) {
    return;
  }
  PictureWatch& watch = shared();
  if (watch.isOwn_) {
    return;
  }
  try {
    watch.note(change);
    for (PictureObserver* observer : watch.observers_) {
      observer->pictureChanges(change);
    }
  } catch (...) {
    // Memory ran out. The host goes on.
  }
}

void PictureWatch::note(const PictureChange& change) {
  auto& store = *static_cast<QBackingStore*>(change.backingStore);
  const auto* const region = static_cast<const QRegion*>(change.region);
  switch (change.kind) {
    case PictureChange::Kind::willPaint:
      outdatedOf(store) -= *region;
      break;
    case PictureChange::Kind::didScroll:
      if (change.x != 0 || change.y != 0) {
        outdatedOf(store) += region->translated(change.x, change.y);
      }
      break;
    case PictureChange::Kind::willBeReplaced:
      if (!store.hasStaticContents()) {
        outdatedOf(store) = QRegion();
      }
      break;
    case PictureChange::Kind::didPaint:
    case PictureChange::Kind::willScroll:
      break;
  }
}

QRegion& PictureWatch::outdatedOf(QBackingStore& store) {
  if (outdated_.size() >= mostStores && outdated_.count(&store) == 0) {
    forgetTheGone();
  }
  return outdated_.try_emplace(&store, QRect(QPoint(0, 0), store.size())).first->second;
}

void PictureWatch::forgetTheGone() {
  const QWidgetList windows = QApplication::topLevelWidgets();
  std::erase_if(outdated_, [&windows](const auto& known) {
    return std::none_of(windows.begin(), windows.end(), [&known](const QWidget* window) {
      return window->backingStore() == known.first;
    });
  });
}

OwnPainting::OwnPainting(QBackingStore& store, const QRegion& region) : store_(store) {
  PictureWatch::shared().isOwn_ = true;
  store_.beginPaint(region);
}

OwnPainting::~OwnPainting() {
  store_.endPaint();
  PictureWatch::shared().isOwn_ = false;
}

}  // namespace tarnix::qt6
