#include "probe/platform/file.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>

#include "platforms/linux/descriptor.h"

namespace tarnix::platform {

namespace {

mode_t modeFor(FileReaders readers) { return readers == FileReaders::everybody ? 0644 : 0600; }

bool writeAll(int descriptor, std::string_view contents) {
  while (!contents.empty()) {
    const ssize_t written = ::write(descriptor, contents.data(), contents.size());
    if (written < 0 && errno == EINTR) {
      continue;
    }
    if (written <= 0) {
      return false;
    }
    contents.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

}  // namespace

bool createFile(const std::string& path, std::string_view contents, FileReaders readers) {
  // Renaming replaces what stands at `path` in one step, whatever it is, and readers see the old
  // file or the new one. mkostemp opens with O_EXCL, which never follows a link.
  std::string temporary = path + ".XXXXXX";
  linux_platform::Descriptor file(::mkostemp(temporary.data(), O_CLOEXEC));
  if (!file.isOpen()) {
    return false;
  }
  if (::fchmod(file.get(), modeFor(readers)) == 0 && writeAll(file.get(), contents) &&
      file.close() && ::rename(temporary.c_str(), path.c_str()) == 0) {
    return true;
  }
  ::unlink(temporary.c_str());
  return false;
}

}  // namespace tarnix::platform
