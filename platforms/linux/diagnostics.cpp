#include "probe/platform/diagnostics.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <string>

#include "platforms/linux/descriptor.h"
#include "platforms/linux/pipe_signal_guard.h"

namespace tarnix::platform {

namespace {

/// "Informational" in both logs; the facility is that of user processes.
constexpr int priority = 6;
constexpr int facility = 1;

/// How long a line of ours waits for a destination that is full.
constexpr int patienceInMilliseconds = 100;

constexpr const char* journalAddress = "/run/systemd/journal/socket";
constexpr const char* syslogAddress = "/dev/log";

/// The journal's own form of a message: the length of the text keeps any byte in it harmless.
std::string journalEntry(std::string_view identifier, std::string_view line) {
  std::string entry = "PRIORITY=" + std::to_string(priority) + "\nSYSLOG_IDENTIFIER=";
  entry += identifier;
  entry += "\nMESSAGE\n";
  for (unsigned shift = 0; shift < 64; shift += 8) {
    entry += static_cast<char>((static_cast<std::uint64_t>(line.size()) >> shift) & 0xFF);
  }
  entry += line;
  entry += '\n';
  return entry;
}

std::string syslogEntry(std::string_view identifier, std::string_view line) {
  // The form has fixed English names, whatever the host's locale.
  static constexpr std::array<const char*, 12> months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  const auto twoDigits = [](int number, char fill) {
    return std::string{number < 10 ? fill : static_cast<char>('0' + number / 10 % 10),
                       static_cast<char>('0' + number % 10)};
  };
  std::string entry = "<" + std::to_string(facility * 8 + priority) + ">";
  entry += months[static_cast<std::size_t>(local.tm_mon) % months.size()];
  entry += " " + twoDigits(local.tm_mday, ' ') + " " + twoDigits(local.tm_hour, '0') + ":" +
           twoDigits(local.tm_min, '0') + ":" + twoDigits(local.tm_sec, '0') + " ";
  entry += identifier;
  entry += "[" + std::to_string(getpid()) + "]: ";
  entry += line;
  return entry;
}

/// One datagram, from a socket that lives no longer: the host's own connection to the log, its
/// identity and its options stay out of it.
bool sendDatagram(const char* address, const std::string& bytes) {
  sockaddr_un target{};
  target.sun_family = AF_UNIX;
  std::strncpy(target.sun_path, address, sizeof(target.sun_path) - 1);
  const linux_platform::Descriptor socket(
      ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  return ::sendto(socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT,
                  static_cast<const sockaddr*>(static_cast<const void*>(&target)),
                  sizeof(target)) >= 0;
}

void writeWithoutSignal(int descriptor, std::string_view text) {
  const linux_platform::PipeSignalGuard guard;
  pollfd destination{.fd = descriptor, .events = POLLOUT, .revents = 0};
  int ready = 0;
  do {
    ready = ::poll(&destination, 1, patienceInMilliseconds);
  } while (ready < 0 && errno == EINTR);
  if (ready > 0) {
    while (::write(descriptor, text.data(), text.size()) < 0 && errno == EINTR) {
    }
  }
}

}  // namespace

void writeDescriptor(int descriptor, std::string_view text) {
  if (descriptor < 0) {
    return;
  }
  const int savedError = errno;
  writeWithoutSignal(descriptor, text);
  errno = savedError;
}

void writeStandardError(std::string_view text) { writeDescriptor(STDERR_FILENO, text); }

void writeSystemLog(std::string_view line) {
  const int savedError = errno;
  const std::string_view identifier = program_invocation_short_name;
  if (!sendDatagram(journalAddress, journalEntry(identifier, line))) {
    sendDatagram(syslogAddress, syslogEntry(identifier, line));
  }
  errno = savedError;
}

}  // namespace tarnix::platform
