#include <gtest/gtest.h>

#include <QImage>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QQmlComponent>
#include <QQuickItem>
#include <cstring>

#include "probe/platform/png.h"
#include "tests/contract/qt6_host_world.h"
#include "tests/contract/screen_walk.h"

/// Pictures of windows and the files that are made of them, compared with the toolkit's.
namespace tarnix::contract {
namespace {

platform::Picture pictureOf(const QImage& image) {
  auto kept = std::make_shared<QImage>(image);
  const std::uint8_t* const pixels = kept->constBits();
  return {.width = static_cast<std::uint32_t>(image.width()),
          .height = static_cast<std::uint32_t>(image.height()),
          .stride = static_cast<std::size_t>(image.bytesPerLine()),
          .pixels = {kept, pixels}};
}

QImage decoded(const std::string& png) {
  return QImage::fromData(reinterpret_cast<const uchar*>(png.data()), static_cast<int>(png.size()),
                          "PNG");
}

/// The key window as a picture.
QImage keyPicture(platform::Application& application) {
  const auto window = keyWindowOf(application);
  const auto picture = window == nullptr ? std::nullopt : window->lastPicture();
  return picture ? decoded(platform::pngOf(*picture)) : QImage();
}

TEST(Png, OfEveryColourAndAlphaIsWhatTheToolkitMakesOfIt) {
  // A row for each alpha, and in it each value that a multiplied colour can have.
  QImage image(256, 256, QImage::Format_ARGB32_Premultiplied);
  for (int alpha = 0; alpha < 256; ++alpha) {
    for (int x = 0; x < 256; ++x) {
      const int colour = std::min(x, alpha);
      reinterpret_cast<QRgb*>(image.scanLine(alpha))[x] =
          qRgba(colour, alpha - colour, colour / 2, alpha);
    }
  }
  const QImage result =
      decoded(platform::pngOf(pictureOf(image))).convertToFormat(QImage::Format_ARGB32);
  // What the toolkit does with many pixels at once differs by one where a quotient is a half, and
  // from processor to processor.
  for (int y = 0; y < 256; ++y) {
    for (int x = 0; x < 256; ++x) {
      const QRgb given = reinterpret_cast<const QRgb*>(image.constScanLine(y))[x];
      ASSERT_EQ(result.pixel(x, y), qUnpremultiply(given)) << x << ", " << y;
      ASSERT_EQ(qPremultiply(result.pixel(x, y)), given) << x << ", " << y;
    }
  }
}

TEST(Png, OfAnOpaquePictureHasEveryPixel) {
  QImage image(301, 97, QImage::Format_ARGB32_Premultiplied);
  std::uint32_t seed = 1;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      seed = seed * 1'664'525 + 1'013'904'223;
      reinterpret_cast<QRgb*>(image.scanLine(y))[x] = 0xff000000U | (seed >> 8);
    }
  }
  const QImage result = decoded(platform::pngOf(pictureOf(image)));
  EXPECT_FALSE(result.hasAlphaChannel());
  EXPECT_EQ(result.convertToFormat(QImage::Format_ARGB32),
            image.convertToFormat(QImage::Format_ARGB32));
}

TEST(Png, ReadsRowsThatAreLongerThanThePictureIsWide) {
  QImage image(8, 4, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::red);
  platform::Picture picture = pictureOf(image);
  picture.width = 3;
  const QImage result = decoded(platform::pngOf(picture));
  EXPECT_EQ(result.size(), QSize(3, 4));
  EXPECT_EQ(result.pixelColor(2, 3), QColor(Qt::red));
}

TEST(Png, OfNothingIsNothing) {
  EXPECT_EQ(platform::pngOf({}), "");
  platform::Picture flat = pictureOf(QImage(2, 2, QImage::Format_ARGB32_Premultiplied));
  flat.height = 0;
  EXPECT_EQ(platform::pngOf(flat), "");
}

class CountingWidget : public QWidget {
 public:
  using QWidget::QWidget;
  int paints = 0;

 protected:
  void paintEvent(QPaintEvent*) override {
    ++paints;
    QPainter painter(this);
    painter.fillRect(rect(), Qt::blue);
    painter.fillRect(10, 20, 30, 40, Qt::yellow);
  }
};

TEST(WidgetPicture, IsWhatWasPaintedLastWithoutPaintingAgain) {
  WidgetsHostWorld world;
  CountingWidget window;
  window.resize(200, 100);
  window.show();
  ASSERT_TRUE(world.pumpUntil([&] { return window.paints > 0 && window.isActiveWindow(); }));
  world.letPass(std::chrono::milliseconds(50));
  const int paints = window.paints;
  const QImage picture = keyPicture(world.application());
  EXPECT_EQ(window.paints, paints);
  ASSERT_EQ(picture.size(), QSize(200, 100) * window.devicePixelRatio());
  EXPECT_EQ(picture.pixelColor(0, 0), QColor(Qt::blue));
  EXPECT_EQ(picture.pixelColor(10, 20), QColor(Qt::yellow));
  EXPECT_EQ(picture.pixelColor(39, 59), QColor(Qt::yellow));
  EXPECT_EQ(picture.pixelColor(40, 60), QColor(Qt::blue));
}

TEST(WidgetPicture, ShowsTheMenuInFrontWhereItStands) {
  WidgetsHostWorld world;
  CountingWidget window;
  window.resize(300, 200);
  window.show();
  ASSERT_TRUE(world.pumpUntil([&] { return window.paints > 0 && window.isActiveWindow(); }));
  QMenu menu(&window);
  menu.addAction("An entry");
  menu.setStyleSheet("QMenu { background: #ff0000; color: #ff0000; }");
  menu.popup(window.mapToGlobal(QPoint(100, 100)));
  ASSERT_TRUE(world.pumpUntil(
      [&] { return menu.windowHandle() != nullptr && menu.windowHandle()->isExposed(); }));
  world.letPass(std::chrono::milliseconds(50));
  const QImage picture = keyPicture(world.application());
  const QPoint inside = window.mapFromGlobal(menu.mapToGlobal(menu.rect().center()));
  EXPECT_EQ(picture.pixelColor(inside), QColor(Qt::red));
  EXPECT_EQ(picture.pixelColor(0, 0), QColor(Qt::blue));
}

TEST(WidgetPicture, IsNoneBeforeAnythingWasShown) {
  WidgetsHostWorld world;
  EXPECT_TRUE(keyPicture(world.application()).isNull());
}

TEST(QuickPicture, HasWhatTheItemsShow) {
  QuickHostWorld world;
  QQmlEngine engine;
  QQmlComponent component(&engine);
  component.setData(
      "import QtQuick\n"
      "Window { width: 200; height: 100; visible: true; color: \"blue\"\n"
      "  Rectangle { x: 10; y: 20; width: 30; height: 40; color: \"yellow\" } }",
      QUrl());
  const std::unique_ptr<QObject> object(component.create());
  auto* const window = qobject_cast<QQuickWindow*>(object.get());
  ASSERT_NE(window, nullptr) << component.errorString().toStdString();
  ASSERT_TRUE(
      world.pumpUntil([&] { return window->isExposed() && window->isSceneGraphInitialized(); }));
  const QImage picture = keyPicture(world.application());
  ASSERT_EQ(picture.size(), QSize(200, 100) * window->devicePixelRatio());
  EXPECT_EQ(picture.pixelColor(0, 0), QColor(Qt::blue));
  EXPECT_EQ(picture.pixelColor(10, 20), QColor(Qt::yellow));
  EXPECT_EQ(picture.pixelColor(39, 59), QColor(Qt::yellow));
  EXPECT_EQ(picture.pixelColor(40, 60), QColor(Qt::blue));
}

}  // namespace
}  // namespace tarnix::contract
