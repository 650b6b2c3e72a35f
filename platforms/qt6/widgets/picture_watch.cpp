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
  const auto known = known_.find(&store);
  return known == known_.end() ? QRegion(QRect(QPoint(0, 0), store.size()))
                               : known->second.outdated;
}

bool PictureWatch::hasPicture(const QBackingStore& store) const {
  const auto known = known_.find(&store);
  return known != known_.end() && known->second.hasPicture;
}

bool PictureWatch::isChanging(const QBackingStore& store) const {
  const auto known = known_.find(&store);
  return known != known_.end() && known->second.changesUnderWay > 0;
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
  Known& picture = known(store);
  switch (change.kind) {
    case PictureChange::Kind::willPaint:
      picture.outdated -= *region;
      ++picture.changesUnderWay;
      break;
    case PictureChange::Kind::willScroll:
      ++picture.changesUnderWay;
      break;
    case PictureChange::Kind::didScroll:
      if (change.x != 0 || change.y != 0) {
        picture.outdated += region->translated(change.x, change.y);
      }
      picture.changesUnderWay = std::max(picture.changesUnderWay - 1, 0);
      break;
    case PictureChange::Kind::didPaint:
      picture.hasPicture = true;
      // The watch may have begun in the middle.
      picture.changesUnderWay = std::max(picture.changesUnderWay - 1, 0);
      break;
    case PictureChange::Kind::willBeReplaced:
      if (!store.hasStaticContents()) {
        picture.outdated = QRegion();
      }
      // A store may stand where one was that went while it was painted.
      picture.changesUnderWay = 0;
      picture.hasPicture = picture.hasPicture && !store.size().isEmpty();
      break;
  }
}

PictureWatch::Known& PictureWatch::known(QBackingStore& store) {
  if (known_.size() >= mostStores && known_.count(&store) == 0) {
    forgetTheGone();
  }
  return known_.try_emplace(&store, Known{.outdated = QRect(QPoint(0, 0), store.size())})
      .first->second;
}

void PictureWatch::forgetTheGone() {
  const QWidgetList windows = QApplication::topLevelWidgets();
  std::erase_if(known_, [&windows](const auto& known) {
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
