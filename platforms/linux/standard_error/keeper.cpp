// Sleeps beside a host whose standard error is diverted, and looks after the stream from the host's
// end to the end of the last process that writes to it. Started by keeper_process.cpp with the
// host's process number and three descriptors.
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <initializer_list>

namespace {

constexpr int stream = 0;
constexpr int destination = 1;
/// Nothing arrives on it; its other end closes when the host cannot read the stream any more.
constexpr int life = 2;

bool writeAll(const char* bytes, ssize_t count) {
  while (count > 0) {
    const ssize_t written = ::write(destination, bytes, static_cast<size_t>(count));
    if (written > 0) {
      bytes += written;
      count -= written;
    } else if (errno == EAGAIN) {
      pollfd ready{.fd = destination, .events = POLLOUT, .revents = 0};
      ::poll(&ready, 1, -1);
    } else if (errno != EINTR) {
      // A full disk may have room again later. Where nobody reads any more, the writers are to be
      // told as they would have been: by the end of this process.
      return errno != EPIPE && errno != EIO;
    }
  }
  return true;
}

void passOn() {
  static char buffer[65'536];
  while (true) {
    const ssize_t count = ::read(stream, buffer, sizeof(buffer));
    if (count > 0) {
      if (!writeAll(buffer, count)) {
        return;
      }
    } else if (count < 0 && errno == EAGAIN) {
      pollfd ready{.fd = stream, .events = POLLIN, .revents = 0};
      ::poll(&ready, 1, -1);
    } else if (count == 0 || errno != EINTR) {
      return;
    }
  }
}

bool isEmpty() {
  int waiting = 0;
  return ::ioctl(stream, FIONREAD, &waiting) != 0 || waiting == 0;
}

/// Sleeps until the host is gone, or until there is nothing left to look after: nobody can write to
/// the stream any more, and the host has read it to its end.
void waitForTheHostsEnd(pid_t host) {
  constexpr int emptyingInterval = 20;
  // Children that go on without executing a program hold the other end of `life` too. Where the
  // system is too old to watch a process, they are waited for.
  const int process = static_cast<int>(::syscall(SYS_pidfd_open, host, 0));
  pollfd watched[] = {{.fd = life, .events = 0, .revents = 0},
                      {.fd = process, .events = POLLIN, .revents = 0},
                      {.fd = stream, .events = 0, .revents = 0}};
  int timeout = -1;
  while (true) {
    const int ready = ::poll(watched, 3, timeout);
    if (ready > 0 && (watched[0].revents != 0 || watched[1].revents != 0)) {
      return;
    }
    if (ready > 0 && watched[2].revents != 0) {
      watched[2].fd = -1;
      timeout = emptyingInterval;
    }
    if (timeout > 0 && isEmpty()) {
      return;
    }
  }
}

}  // namespace

int main(int argumentCount, char** arguments) {
  // Meant for the host and its terminal. This process ends when they have no more use for it.
  for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGPIPE, SIGTSTP, SIGTTOU}) {
    std::signal(signal, SIG_IGN);
  }
  if (argumentCount < 2) {
    return 2;
  }
  waitForTheHostsEnd(static_cast<pid_t>(std::atoi(arguments[1])));
  passOn();
  return 0;
}
