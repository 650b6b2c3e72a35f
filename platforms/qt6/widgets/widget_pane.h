#pragma once

#include <QPointF>
#include <QPointer>
#include <QRegion>
#include <QWidget>
#include <memory>

#include "platforms/qt6/shared/overlay_pane.h"
#include "platforms/qt6/widgets/picture_watch.h"
#include "platforms/qt6/widgets/saved_pixels.h"

class QBackingStore;

namespace tarnix::qt6 {

/// Draws over a window of widgets, in the picture of it that the toolkit keeps in memory and sends
/// to the screen: no widget, and mostly no event, of the host has a part in it. What lies under the
/// figures is put back before the toolkit changes the picture, and they are drawn anew after.
class WidgetPane : public OverlayPane, private PictureObserver {
 public:
  /// `host` is a window of its own.
  explicit WidgetPane(QWidget& host);
  WidgetPane(const WidgetPane&) = delete;
  WidgetPane& operator=(const WidgetPane&) = delete;
  ~WidgetPane() override;

  void show(std::shared_ptr<const platform::DisplayList> list, QPointF origin) override;
  void setHiddenForPicture(bool isHidden) override;

 private:
  void pictureChanges(const PictureChange& change) override;

  /// Of the window as a whole; null while it has no picture in memory.
  QBackingStore* backingStore() const;
  /// Whether painting there may change what was saved.
  bool isNearFigures(const QRegion& region) const;
  bool isChanging() const;
  /// Whether the picture in memory is not up to date there: the host has to paint first.
  bool isOutdated() const;
  /// Draws what was shown last, where there is a picture in memory that is up to date.
  void draw();
  void putBack();
  /// Brings what has changed in `region` to the screen, at once or with the host's next frame.
  void send(const QRegion& region);

  /// Goes when it likes.
  QPointer<QWidget> host_;
  std::shared_ptr<const platform::DisplayList> list_;
  QPointF origin_;
  /// All that the figures touch, in the window.
  QRegion area_;
  SavedPixels under_;
  /// Whether the figures in the picture are those of `list_`.
  bool isDrawn_ = false;
  bool isHidden_ = false;
};

}  // namespace tarnix::qt6
