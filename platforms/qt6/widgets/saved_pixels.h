#pragma once

#include <QImage>
#include <QRect>
#include <QRegion>
#include <QSize>
#include <vector>

namespace tarnix::qt6 {

/// Parts of a picture as they were, to be put back.
class SavedPixels {
 public:
  SavedPixels() = default;
  /// `region` is in the picture's own coordinates, whose unit is its device pixel ratio.
  SavedPixels(const QImage& picture, const QRegion& region);

  bool isEmpty() const { return parts_.empty(); }
  /// As it was given; all of it was saved.
  const QRegion& region() const { return region_; }
  /// Whether they are of a picture like this: never when there are none.
  bool areOf(const QImage& picture) const;

  /// `picture` is one that they are of.
  void putBack(QImage& picture) const;

 private:
  struct Part {
    QRect place;
    QImage pixels;
  };

  QRegion region_;
  QSize size_;
  QImage::Format format_ = QImage::Format_Invalid;
  std::vector<Part> parts_;
};

}  // namespace tarnix::qt6
