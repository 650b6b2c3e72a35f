#include "companion/output/terminal_picture.h"

#include <gtest/gtest.h>
#include <png.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <string>
#include <thread>
#include <vector>

#include "companion/output/sixel_picture.h"
#include "tests/companion/socket_descriptor.h"

namespace tarnix::companion {
namespace {

/// A picture of one colour as a PNG file.
std::string pngOf(unsigned width, unsigned height) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = width;
  image.height = height;
  image.format = PNG_FORMAT_RGB;
  const std::vector<unsigned char> pixels(PNG_IMAGE_SIZE(image), 0xFF);
  png_alloc_size_t size = 0;
  png_image_write_to_memory(&image, nullptr, &size, 0, pixels.data(), 0, nullptr);
  std::string png(size, '\0');
  png_image_write_to_memory(&image, png.data(), &size, 0, pixels.data(), 0, nullptr);
  png.resize(size);
  return png;
}

TEST(TerminalPicture, ComesInPiecesThatSayWhetherMoreFollow) {
  const std::string png = std::string(3'072, '\0') + "\x04\x10\x41";
  EXPECT_EQ(pictureSequence(PictureProtocol::kitty, png, std::nullopt),
            "\x1b_Ga=T,f=100,m=1;" + std::string(4'096, 'A') + "\x1b\\" + "\x1b_Gm=0;BBBB\x1b\\");
}

TEST(TerminalPicture, IsMadeToFitWhereItIsTooWide) {
  const PictureRoom room{80, 640};
  const auto start = [&](PictureProtocol protocol, unsigned width) {
    return pictureSequence(protocol, pngOf(width, 4), room).value().substr(0, 60);
  };
  EXPECT_TRUE(start(PictureProtocol::kitty, 640).starts_with("\x1b_Ga=T,f=100,m=0;"));
  EXPECT_TRUE(start(PictureProtocol::kitty, 641).starts_with("\x1b_Ga=T,f=100,c=80,m=0;"));
  EXPECT_NE(start(PictureProtocol::iterm, 641).find(";width=100%:"), std::string::npos);
  EXPECT_EQ(start(PictureProtocol::iterm, 640).find("width"), std::string::npos);
  // The size stands after the aspect ratio of a pixel.
  EXPECT_NE(start(PictureProtocol::sixel, 640).find("\"1;1;640;4"), std::string::npos);
  EXPECT_NE(start(PictureProtocol::sixel, 1'280).find("\"1;1;640;2"), std::string::npos);
}

TEST(TerminalPicture, OfSixelsIsOneControlString) {
  const std::string sequence = sixelSequence(pngOf(30, 20), 640).value();
  EXPECT_TRUE(sequence.starts_with("\x1bP"));
  EXPECT_TRUE(sequence.ends_with("\x1b\\"));
  EXPECT_EQ(sequence.find('\x1b', 1), sequence.size() - 2);
}

TEST(TerminalPicture, IsNoneWithoutAPngFile) {
  const std::string whole = pngOf(30, 20);
  for (const std::string& png : {std::string(), std::string("no picture"), whole.substr(0, 40)}) {
    EXPECT_EQ(pictureSequence(PictureProtocol::sixel, png, std::nullopt), std::nullopt);
  }
  EXPECT_EQ(sixelSequence(pngOf(16'385, 1), 640), std::nullopt) << "larger than any screen";
}

/// What a program makes of a terminal that answers what it is asked with `answer`.
bool takesSixelsOn(const std::string& answer) {
  int terminal = -1;
  int programs = -1;
  if (openpty(&terminal, &programs, nullptr, nullptr, nullptr) != 0) {
    ADD_FAILURE() << "no terminal";
    return false;
  }
  const SocketDescriptor ours(terminal);
  const SocketDescriptor theirs(programs);
  std::thread answering([&] {
    std::array<char, 3> asked{};
    EXPECT_EQ(read(terminal, asked.data(), asked.size()), 3);
    EXPECT_EQ(std::string(asked.data(), asked.size()), "\x1b[c");
    EXPECT_EQ(write(terminal, answer.data(), answer.size()), static_cast<ssize_t>(answer.size()));
  });
  const bool takes = takesSixels(programs, programs);
  answering.join();
  termios after{};
  tcgetattr(programs, &after);
  EXPECT_NE(after.c_lflag & ICANON, 0U) << "left as it was";
  EXPECT_NE(after.c_lflag & ECHO, 0U);
  return takes;
}

TEST(TerminalPicture, IsMadeOfSixelsWhereTheTerminalSaysSo) {
  EXPECT_TRUE(takesSixelsOn("\x1b[?62;4;22c"));
  EXPECT_TRUE(takesSixelsOn("typed\x1b[?4c"));
  EXPECT_FALSE(takesSixelsOn("\x1b[?62;22c"));
  EXPECT_FALSE(takesSixelsOn("\x1b[?64;14c"));
  EXPECT_FALSE(takesSixelsOn(std::string(400, 'x')));
  EXPECT_FALSE(takesSixelsOn("typed"));
}

TEST(TerminalPicture, IsNotAskedForWhereNobodyLooks) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  const SocketDescriptor input(ends[0]);
  const SocketDescriptor output(ends[1]);
  EXPECT_FALSE(takesSixels(ends[0], ends[1]));
}

}  // namespace
}  // namespace tarnix::companion
