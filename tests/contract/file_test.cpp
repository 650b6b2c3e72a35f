#include "probe/platform/file.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace tarnix::platform {
namespace {

class FileTest : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = testing::TempDir() + "tarnix-file-XXXXXX";
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    directory = pattern;
    path = directory / "marker";
  }

  void TearDown() override { std::filesystem::remove_all(directory); }

  static std::string contents(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  long entryCount() const {
    return std::distance(std::filesystem::directory_iterator(directory), {});
  }

  std::filesystem::path directory;
  std::filesystem::path path;
};

TEST_F(FileTest, HoldsExactlyTheContents) {
  const std::string bytes("line\n\0\xFF", 7);
  ASSERT_TRUE(createFile(path, bytes, FileReaders::everybody));
  EXPECT_EQ(contents(path), bytes);
  EXPECT_EQ(entryCount(), 1);
}

TEST_F(FileTest, MayBeEmpty) {
  ASSERT_TRUE(createFile(path, "", FileReaders::everybody));
  EXPECT_TRUE(std::filesystem::is_empty(path));
}

TEST_F(FileTest, ReplacesALongerFile) {
  ASSERT_TRUE(createFile(path, std::string(100'000, 'x'), FileReaders::everybody));
  ASSERT_TRUE(createFile(path, "ready", FileReaders::everybody));
  EXPECT_EQ(contents(path), "ready");
  EXPECT_EQ(entryCount(), 1);
}

TEST_F(FileTest, LeavesReadersOfTheOldFileWithTheOldFile) {
  ASSERT_TRUE(createFile(path, "old", FileReaders::everybody));
  std::ifstream reader(path);
  ASSERT_TRUE(createFile(path, "new", FileReaders::everybody));
  std::string word;
  reader >> word;
  EXPECT_EQ(word, "old");
}

TEST_F(FileTest, ReplacesALinkInsteadOfFollowingIt) {
  const std::filesystem::path victim = directory / "victim";
  ASSERT_TRUE(createFile(victim, "precious", FileReaders::everybody));
  std::filesystem::create_symlink(victim, path);
  ASSERT_TRUE(createFile(path, "ready", FileReaders::everybody));
  EXPECT_EQ(contents(victim), "precious");
  EXPECT_FALSE(std::filesystem::is_symlink(path));
  EXPECT_EQ(contents(path), "ready");
}

TEST_F(FileTest, ReplacesALinkThatLeadsNowhere) {
  std::filesystem::create_symlink(directory / "nowhere", path);
  ASSERT_TRUE(createFile(path, "ready", FileReaders::everybody));
  EXPECT_FALSE(std::filesystem::exists(directory / "nowhere"));
  EXPECT_EQ(contents(path), "ready");
}

TEST_F(FileTest, IsReadableByWhomItIsForAndWritableByItsOwner) {
  ASSERT_TRUE(createFile(path, "ready", FileReaders::everybody));
  struct stat status {};
  ASSERT_EQ(stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0644U);
  ASSERT_TRUE(createFile(path, "private", FileReaders::owner));
  ASSERT_EQ(stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0600U);
}

TEST_F(FileTest, FailsWithoutATraceWhereItCannotBe) {
  EXPECT_FALSE(createFile(directory / "missing" / "marker", "ready", FileReaders::everybody));
  std::filesystem::create_directory(path);
  EXPECT_FALSE(createFile(path, "ready", FileReaders::everybody));
  EXPECT_EQ(entryCount(), 1);
}

TEST_F(FileTest, FailsWithoutATraceOnAFullDisk) {
  // A limit on file sizes is the full disk that a test can have.
  const pid_t child = fork();
  if (child == 0) {
    const rlimit limit{10, 10};
    signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    _exit(createFile(path, std::string(1000, 'x'), FileReaders::everybody) ? 1 : 0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(entryCount(), 0);
}

}  // namespace
}  // namespace tarnix::platform
