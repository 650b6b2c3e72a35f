#include "probe/platform/png.h"

#include <png.h>

#include <array>
#include <csetjmp>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <exception>
#include <utility>
#include <vector>

namespace tarnix::platform {
namespace {

// What a screen shows is mostly plain: looking for the nearest repetition only, and not filtering
// the rows first, is several times faster than what makes the smallest file, which is a little
// smaller. bench/png_writing compares.
constexpr int compressionLevel = 1;
constexpr std::size_t compressedPiece = 256 * 1024;

constexpr std::size_t bytesAPixel = 4;
enum Channel : std::size_t { blue, green, red, alpha };

bool isOpaque(const Picture& picture) {
  for (std::uint32_t y = 0; y < picture.height; ++y) {
    const std::uint8_t* const row = picture.pixels.get() + y * picture.stride;
    std::uint8_t all = 255;
    for (std::size_t x = 0; x < picture.width; ++x) {
      all &= row[x * bytesAPixel + alpha];
    }
    if (all != 255) {
      return false;
    }
  }
  return true;
}

void copyOpaqueRow(const std::uint8_t* from, std::size_t width, std::uint8_t* to) {
  for (std::size_t x = 0; x < width; ++x, from += bytesAPixel, to += 3) {
    to[0] = from[red];
    to[1] = from[green];
    to[2] = from[blue];
  }
}

/// For each alpha, what a colour that was multiplied with it is to be multiplied with, in units of
/// 1 / 65,536.
constexpr std::array<std::uint32_t, 256> inverseAlphas = [] {
  std::array<std::uint32_t, 256> result{};
  for (std::uint32_t value = 1; value < result.size(); ++value) {
    result[value] = 255 * 65'537 / value;
  }
  return result;
}();

std::uint8_t unpremultiplied(std::uint8_t colour, std::uint32_t inverseAlpha) {
  return static_cast<std::uint8_t>((colour * inverseAlpha + 32'768) >> 16);
}

void copyRow(const std::uint8_t* from, std::size_t width, std::uint8_t* to) {
  for (std::size_t x = 0; x < width; ++x, from += bytesAPixel, to += bytesAPixel) {
    const std::uint32_t inverseAlpha = inverseAlphas[from[alpha]];
    to[0] = unpremultiplied(from[red], inverseAlpha);
    to[1] = unpremultiplied(from[green], inverseAlpha);
    to[2] = unpremultiplied(from[blue], inverseAlpha);
    to[3] = from[alpha];
  }
}

/// The state of one file that is being written. Nothing in it is made or destroyed where the
/// library may jump.
struct Writer {
  ~Writer() { png_destroy_write_struct(&file, &info); }

  /// Called by the library, which knows no exceptions.
  static void append(png_structp file, png_bytep bytes, std::size_t count) {
    auto& writer = *static_cast<Writer*>(png_get_io_ptr(file));
    try {
      writer.result.append(reinterpret_cast<const char*>(bytes), count);
    } catch (const std::exception&) {
      writer.isComplete = false;
    }
  }

  png_structp file = nullptr;
  png_infop info = nullptr;
  std::string result;
  std::vector<std::uint8_t> row;
  bool isOpaque = false;
  bool isComplete = true;
};

void keepQuiet(png_structp, png_const_charp) {}

void writeAll(Writer& writer, const Picture& picture) {
  png_set_write_fn(writer.file, &writer, Writer::append, nullptr);
  png_set_IHDR(writer.file, writer.info, picture.width, picture.height, 8,
               writer.isOpaque ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_set_compression_level(writer.file, compressionLevel);
  png_set_compression_buffer_size(writer.file, compressedPiece);
  png_set_filter(writer.file, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
  png_write_info(writer.file, writer.info);
  for (std::uint32_t y = 0; y < picture.height; ++y) {
    const std::uint8_t* const row = picture.pixels.get() + y * picture.stride;
    (writer.isOpaque ? copyOpaqueRow : copyRow)(row, picture.width, writer.row.data());
    png_write_row(writer.file, writer.row.data());
  }
  png_write_end(writer.file, nullptr);
}

/// False when the library gave up.
bool write(Writer& writer, const Picture& picture) {
  if (setjmp(png_jmpbuf(writer.file)) != 0) {
    return false;
  }
  writeAll(writer, picture);
  return writer.isComplete;
}

}  // namespace

std::string pngOf(const Picture& picture) {
  if (picture.pixels == nullptr || picture.width == 0 || picture.height == 0) {
    return {};
  }
  Writer writer;
  writer.isOpaque = isOpaque(picture);
  writer.row.resize(std::size_t{picture.width} * bytesAPixel);
  writer.result.reserve(compressedPiece);
  writer.file = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, keepQuiet);
  writer.info = writer.file == nullptr ? nullptr : png_create_info_struct(writer.file);
  if (writer.info == nullptr) {
    return {};
  }
  return write(writer, picture) ? std::move(writer.result) : std::string();
}

}  // namespace tarnix::platform
