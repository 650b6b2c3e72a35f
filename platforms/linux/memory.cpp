#include "probe/platform/memory.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <cstring>

#include "platforms/linux/descriptor.h"

namespace tarnix::platform {

std::optional<std::uint64_t> residentMemory() {
  const linux_platform::Descriptor file(::open("/proc/self/statm", O_RDONLY | O_CLOEXEC));
  std::array<char, 128> text{};
  const ssize_t length = ::read(file.get(), text.data(), text.size());
  if (length <= 0) {
    return std::nullopt;
  }
  // The second number, in pages.
  const char* const end = text.data() + length;
  const char* const blank =
      static_cast<const char*>(std::memchr(text.data(), ' ', static_cast<std::size_t>(length)));
  std::uint64_t pages = 0;
  if (blank == nullptr || std::from_chars(blank + 1, end, pages).ec != std::errc()) {
    return std::nullopt;
  }
  return pages * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

}  // namespace tarnix::platform
