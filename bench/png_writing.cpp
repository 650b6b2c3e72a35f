// What it takes to make a PNG file of a screen of 1080 x 2340 pixels: with the toolkit as it does
// by default, with what the probe does, and with other libraries that could have been chosen. The
// picture is what an application shows: plain areas, text, pictograms with soft edges, a gradient.

#include <benchmark/benchmark.h>
#include <libdeflate.h>
#include <spng.h>

#include <QBuffer>
#include <QGuiApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "bench/ratio_reporter.h"
#include "probe/platform/png.h"

namespace tarnix::bench {
namespace {

constexpr int width = 1080;
constexpr int height = 2340;

void paintRow(QPainter& painter, int row) {
  const int y = 120 + row * 74;
  painter.setPen(QColor("#d8d8dc"));
  painter.setBrush(Qt::white);
  painter.drawRoundedRect(QRectF(20.5, y + 0.5, width - 41, 64), 10, 10);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor::fromHsv(row * 37 % 360, 180, 220));
  painter.drawEllipse(QRectF(34, y + 9, 46, 46));
  painter.setPen(QColor("#202024"));
  painter.drawText(100, y + 42, QString("Message %1, which says this and that").arg(row * 7919));
}

QImage screen() {
  QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
  image.fill(QColor("#f2f2f6"));
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  QLinearGradient gradient(0, 0, width, 0);
  gradient.setColorAt(0, QColor("#3050c0"));
  gradient.setColorAt(1, QColor("#30b0c0"));
  painter.fillRect(0, 0, width, 110, gradient);
  QFont font;
  font.setPixelSize(26);
  painter.setFont(font);
  for (int row = 0; row < 30; ++row) {
    paintRow(painter, row);
  }
  return image;
}

const QImage& picture() {
  static const QImage& image = *new QImage(screen());
  return image;
}

std::string withProbe() {
  const QImage& image = picture();
  return platform::pngOf({.width = width,
                          .height = height,
                          .stride = static_cast<std::size_t>(image.bytesPerLine()),
                          .pixels = {std::shared_ptr<void>(), image.constBits()}});
}

std::string withToolkit() {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  picture().save(&buffer, "PNG");
  return bytes.toStdString();
}

/// Red, green, blue, in rows without gaps, each begun by a filter number if `withFilter`.
std::vector<unsigned char> colours(bool withFilter) {
  std::vector<unsigned char> result;
  result.reserve(std::size_t{height} * (width * 3 + 1));
  for (int y = 0; y < height; ++y) {
    if (withFilter) {
      result.push_back(0);
    }
    const auto* row = reinterpret_cast<const QRgb*>(picture().constScanLine(y));
    for (int x = 0; x < width; ++x) {
      result.insert(result.end(), {static_cast<unsigned char>(qRed(row[x])),
                                   static_cast<unsigned char>(qGreen(row[x])),
                                   static_cast<unsigned char>(qBlue(row[x]))});
    }
  }
  return result;
}

std::string withSpng() {
  const std::vector<unsigned char> pixels = colours(false);
  spng_ctx* const context = spng_ctx_new(SPNG_CTX_ENCODER);
  spng_set_option(context, SPNG_ENCODE_TO_BUFFER, 1);
  spng_set_option(context, SPNG_IMG_COMPRESSION_LEVEL, 1);
  spng_set_option(context, SPNG_FILTER_CHOICE, SPNG_FILTER_CHOICE_NONE);
  spng_ihdr header{width, height, 8, SPNG_COLOR_TYPE_TRUECOLOR, 0, 0, 0};
  spng_set_ihdr(context, &header);
  spng_encode_image(context, pixels.data(), pixels.size(), SPNG_FMT_PNG, SPNG_ENCODE_FINALIZE);
  std::size_t size = 0;
  int error = 0;
  void* const bytes = spng_get_png_buffer(context, &size, &error);
  std::string result(static_cast<const char*>(bytes), size);
  std::free(bytes);
  spng_ctx_free(context);
  return result;
}

/// Only what would be inside the file.
std::string withDeflate() {
  const std::vector<unsigned char> pixels = colours(true);
  libdeflate_compressor* const compressor = libdeflate_alloc_compressor(1);
  std::string result(libdeflate_zlib_compress_bound(compressor, pixels.size()), '\0');
  result.resize(libdeflate_zlib_compress(compressor, pixels.data(), pixels.size(), result.data(),
                                         result.size()));
  libdeflate_free_compressor(compressor);
  return result;
}

template <std::string (*write)()>
void run(benchmark::State& state) {
  std::size_t size = 0;
  for (auto unused : state) {
    static_cast<void>(unused);
    size = write().size();
  }
  state.counters["bytes"] = static_cast<double>(size);
}

BENCHMARK(run<withToolkit>)->Name("png/toolkit")->Unit(benchmark::kMillisecond);
BENCHMARK(run<withProbe>)->Name("png/probe (libpng)")->Unit(benchmark::kMillisecond);
BENCHMARK(run<withSpng>)->Name("png/libspng")->Unit(benchmark::kMillisecond);
BENCHMARK(run<withDeflate>)->Name("png/libdeflate")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarnix::bench

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  return tarnix::bench::runBenchmarks(argc, argv);
}
