#pragma once

#include <QRegion>
#include <unordered_map>
#include <vector>

#include "probe/bootstrap/interposed_calls.h"

class QBackingStore;

namespace tarnix::qt6 {

/// Is told of each change that the toolkit makes to a picture which it keeps of a window. Main
/// thread.
class PictureObserver {
 public:
  virtual ~PictureObserver() = default;
  virtual void pictureChanges(const PictureChange& change) = 0;
};

/// Follows what the toolkit does to the pictures that it keeps of windows of widgets. Main thread.
class PictureWatch {
 public:
  static PictureWatch& shared();

  /// Nothing is known of what happened before.
  void start(InterposedCalls& calls);
  bool hasStarted() const { return hasStarted_; }

  /// Where the picture in memory may not be what was painted last: on X11 the server scrolls a copy
  /// of its own, and the one in memory stays as it was until it is painted there.
  QRegion outdated(const QBackingStore& store) const;
  /// Whether it was painted since the watch began. Before, asking some platforms for the picture is
  /// fatal.
  bool hasPicture(const QBackingStore& store) const;
  /// Whether the toolkit is at it: what is painted now may be painted over.
  bool isChanging(const QBackingStore& store) const;

  /// Until it is removed.
  void add(PictureObserver& observer);
  void remove(PictureObserver& observer);

 private:
  friend class OwnPainting;

  struct Known {
    QRegion outdated;
    bool hasPicture = false;
    /// How many changes are under way, one in another.
    int changesUnderWay = 0;
  };

  PictureWatch() = default;
  static void tell(const PictureChange& change) noexcept;
  void note(const PictureChange& change);
  Known& known(QBackingStore& store);
  void forgetTheGone();

  bool hasStarted_ = false;
  /// Whether it is us who paint.
  bool isOwn_ = false;
  /// Each store that was heard of; one that has gone stays for some time.
  std::unordered_map<const QBackingStore*, Known> known_;
  std::vector<PictureObserver*> observers_;
};

/// While it lives, the pixels of a picture may be changed: whatever still reads them to bring them
/// to the screen has been waited for. Observers do not hear of it.
class OwnPainting {
 public:
  OwnPainting(QBackingStore& store, const QRegion& region);
  OwnPainting(const OwnPainting&) = delete;
  OwnPainting& operator=(const OwnPainting&) = delete;
  ~OwnPainting();

 private:
  QBackingStore& store_;
};

}  // namespace tarnix::qt6
