#include "companion/output/sixel_picture.h"

#include <png.h>
#include <poll.h>
#include <sixel/sixel.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <memory>
#include <new>
#include <vector>

namespace tarnix::companion {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

/// In either direction. More than any screen has, and few enough to be multiplied.
constexpr std::size_t longestSide = 16'384;
constexpr std::size_t bytesPerPixel = 3;
constexpr int colorCount = 256;

/// Terminals answer at once; across a slow link it takes longer.
constexpr auto patience = 1s;
/// No answer is longer.
constexpr std::size_t longestAnswer = 256;

struct Pixels {
  std::size_t width = 0;
  std::size_t height = 0;
  std::vector<unsigned char> bytes;
};

std::optional<Pixels> decode(std::string_view png) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_memory(&image, png.data(), png.size()) == 0) {
    return std::nullopt;
  }
  image.format = PNG_FORMAT_RGB;
  Pixels pixels{image.width, image.height, {}};
  if (pixels.width > longestSide || pixels.height > longestSide) {
    png_image_free(&image);
    return std::nullopt;
  }
  pixels.bytes.resize(PNG_IMAGE_SIZE(image));
  // What is not opaque stands before the black of most terminals.
  const png_color background{0, 0, 0};
  if (png_image_finish_read(&image, &background, pixels.bytes.data(), 0, nullptr) == 0) {
    return std::nullopt;
  }
  return pixels;
}

std::optional<Pixels> narrowed(Pixels pixels, std::size_t widest) {
  if (pixels.width <= widest || widest == 0) {
    return pixels;
  }
  const double scale = static_cast<double>(widest) / static_cast<double>(pixels.width);
  const auto height = std::lround(static_cast<double>(pixels.height) * scale);
  Pixels result{widest, std::max<std::size_t>(1, static_cast<std::size_t>(height)), {}};
  result.bytes.resize(result.width * result.height * bytesPerPixel);
  const SIXELSTATUS status = sixel_helper_scale_image(
      result.bytes.data(), pixels.bytes.data(), static_cast<int>(pixels.width),
      static_cast<int>(pixels.height), SIXEL_PIXELFORMAT_RGB888, static_cast<int>(result.width),
      static_cast<int>(result.height), SIXEL_RES_BILINEAR, nullptr);
  return SIXEL_SUCCEEDED(status) ? std::optional(std::move(result)) : std::nullopt;
}

int append(char* data, int size, void* text) {
  try {
    static_cast<std::string*>(text)->append(data, static_cast<std::size_t>(size));
  } catch (const std::bad_alloc&) {
    return -1;
  }
  return size;
}

/// A terminal that hands over each key as it comes, and shows none, for as long as this lives.
class RawInput {
 public:
  explicit RawInput(int descriptor) : descriptor_(descriptor) {
    isRaw_ = tcgetattr(descriptor, &before_) == 0;
    termios raw = before_;
    raw.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    raw.c_cc[VMIN] = 0;
    raw.c_cc[VTIME] = 0;
    isRaw_ = isRaw_ && tcsetattr(descriptor, TCSANOW, &raw) == 0;
  }
  ~RawInput() {
    if (isRaw_) {
      tcsetattr(descriptor_, TCSANOW, &before_);
    }
  }
  RawInput(const RawInput&) = delete;
  RawInput& operator=(const RawInput&) = delete;

  bool isRaw() const { return isRaw_; }

 private:
  int descriptor_;
  termios before_{};
  bool isRaw_ = false;
};

/// What a terminal says of itself: "ESC [ ?", numbers with semicolons between them, "c".
constexpr std::string_view question = "\x1b[c";
constexpr std::string_view answerStart = "\x1b[?";

bool isComplete(const std::string& answer) {
  const std::size_t start = answer.find(answerStart);
  return start != std::string::npos && answer.find('c', start) != std::string::npos;
}

bool namesSixels(const std::string& answer) {
  const std::size_t start = answer.find(answerStart) + answerStart.size();
  const std::string numbers = ';' + answer.substr(start, answer.find('c', start) - start) + ';';
  return numbers.find(";4;") != std::string::npos;
}

}  // namespace

std::optional<std::string> sixelSequence(std::string_view png, std::size_t widest) {
  std::optional<Pixels> pixels = decode(png);
  if (pixels) {
    pixels = narrowed(*std::move(pixels), widest);
  }
  if (!pixels) {
    return std::nullopt;
  }
  const auto width = static_cast<int>(pixels->width);
  const auto height = static_cast<int>(pixels->height);
  std::string sequence;
  sixel_output_t* output = nullptr;
  sixel_dither_t* dither = nullptr;
  bool isDone = SIXEL_SUCCEEDED(sixel_output_new(&output, append, &sequence, nullptr)) &&
                SIXEL_SUCCEEDED(sixel_dither_new(&dither, colorCount, nullptr));
  isDone = isDone &&
           SIXEL_SUCCEEDED(sixel_dither_initialize(dither, pixels->bytes.data(), width, height,
                                                   SIXEL_PIXELFORMAT_RGB888, SIXEL_LARGE_AUTO,
                                                   SIXEL_REP_AUTO, SIXEL_QUALITY_AUTO)) &&
           SIXEL_SUCCEEDED(sixel_encode(pixels->bytes.data(), width, height, 0, dither, output));
  sixel_dither_unref(dither);
  sixel_output_unref(output);
  return isDone ? std::optional(std::move(sequence)) : std::nullopt;
}

bool takesSixels(int input, int output) {
  if (isatty(input) == 0 || isatty(output) == 0) {
    return false;
  }
  const RawInput raw(input);
  if (!raw.isRaw() ||
      write(output, question.data(), question.size()) != static_cast<ssize_t>(question.size())) {
    return false;
  }
  std::string answer;
  const Clock::time_point end = Clock::now() + patience;
  while (!isComplete(answer) && answer.size() < longestAnswer) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
    pollfd ready{input, POLLIN, 0};
    std::array<char, longestAnswer> block{};
    if (left <= 0 || poll(&ready, 1, static_cast<int>(left)) <= 0) {
      return false;
    }
    const ssize_t count = read(input, block.data(), block.size());
    if (count <= 0) {
      return false;
    }
    answer.append(block.data(), static_cast<std::size_t>(count));
  }
  return isComplete(answer) && namesSixels(answer);
}

}  // namespace tarnix::companion
