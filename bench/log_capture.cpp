// What a host pays for writing a log: one million lines into a pipe that a bare reader drains, the
// same with the probe loaded, and the same with a companion that takes the events. The reader of
// the pipe is the same each time. Prints the medians and their ratios. Arguments: the folder of the
// build, and optionally the number of rounds.
#include <arpa/inet.h>
#include <dirent.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <mutex>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;

constexpr long lineCount = 1'000'000;

struct Variant {
  const char* name;
  bool hasProbe;
  bool hasCompanion;
  double bound;
};

constexpr std::array<Variant, 3> variants = {{{"bare reader", false, false, 1},
                                              {"with the probe", true, false, 2},
                                              {"with the probe and a companion", true, true, 3}}};

/// Reads until the end, on a thread of its own, and counts what comes.
class Drain {
 public:
  explicit Drain(int descriptor)
      : thread_([this, descriptor] {
          std::vector<char> buffer(65'536);
          ssize_t count = 0;
          while ((count = ::read(descriptor, buffer.data(), buffer.size())) > 0) {
            const std::lock_guard guard(mutex_);
            bytes_ += static_cast<std::uint64_t>(count);
            lines_ += static_cast<std::uint64_t>(
                std::count(buffer.begin(), buffer.begin() + count, '\n'));
            if (text_.size() < 65'536) {
              text_.append(buffer.data(), static_cast<std::size_t>(count));
            }
          }
          ::close(descriptor);
        }) {}
  ~Drain() { thread_.join(); }

  std::uint64_t bytes() const { return read(bytes_); }
  std::uint64_t lines() const { return read(lines_); }

  bool waitFor(const std::string& text) const {
    for (int turn = 0; turn < 1'000; ++turn) {
      if (read(text_).find(text) != std::string::npos) {
        return true;
      }
      std::this_thread::sleep_for(10ms);
    }
    return false;
  }

 private:
  template <class T>
  T read(const T& value) const {
    const std::lock_guard guard(mutex_);
    return value;
  }

  mutable std::mutex mutex_;
  std::uint64_t bytes_ = 0;
  std::uint64_t lines_ = 0;
  std::string text_;
  std::thread thread_;
};

std::set<std::string> socketsOf(pid_t process) {
  std::set<std::string> inodes;
  const std::string folder = fmt::format("/proc/{}/fd", process);
  DIR* const directory = ::opendir(folder.c_str());
  while (const dirent* entry = directory == nullptr ? nullptr : ::readdir(directory)) {
    std::array<char, 64> target{};
    const std::string path = folder + "/" + entry->d_name;
    const ssize_t length = ::readlink(path.c_str(), target.data(), target.size() - 1);
    const std::string link(target.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    if (link.starts_with("socket:[")) {
      inodes.insert(link.substr(8, link.size() - 9));
    }
  }
  if (directory != nullptr) {
    ::closedir(directory);
  }
  return inodes;
}

/// The port that the process listens on; 0 when it does not.
std::uint16_t listeningPort(pid_t process) {
  const std::set<std::string> inodes = socketsOf(process);
  std::ifstream table("/proc/net/tcp");
  std::string line;
  while (std::getline(table, line)) {
    std::istringstream fields(line);
    std::string slot, local, remote, state, queues, timer, retransmissions, user, timeout, inode;
    fields >> slot >> local >> remote >> state >> queues >> timer >> retransmissions >> user >>
        timeout >> inode;
    if (state == "0A" && inodes.contains(inode)) {
      return static_cast<std::uint16_t>(std::stoul(local.substr(local.find(':') + 1), nullptr, 16));
    }
  }
  return 0;
}

int connectTo(std::uint16_t port) {
  const int connection = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return ::connect(connection, static_cast<const sockaddr*>(static_cast<const void*>(&address)),
                   sizeof address) == 0
             ? connection
             : -1;
}

struct Host {
  pid_t process;
  FILE* commands;
  FILE* answers;
  int log;
};

Host startHost(const std::string& build, bool hasProbe) {
  std::array<std::array<int, 2>, 3> pipes{};
  for (std::array<int, 2>& ends : pipes) {
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
      std::perror("pipe2");
      std::exit(1);
    }
  }
  const std::string program = build + "/bin/bench_log_writer_host";
  const std::string library = build + "/lib/libtarnixprobe.so";
  const pid_t process = ::fork();
  if (process == 0) {
    ::dup2(pipes[0][0], 0);
    ::dup2(pipes[1][1], 1);
    ::dup2(pipes[2][1], 2);
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    if (hasProbe) {
      ::setenv("LD_PRELOAD", library.c_str(), 1);
    }
    ::execl(program.c_str(), program.c_str(), nullptr);
    ::_exit(127);
  }
  ::close(pipes[0][0]);
  ::close(pipes[1][1]);
  ::close(pipes[2][1]);
  return {process, ::fdopen(pipes[0][1], "w"), ::fdopen(pipes[1][0], "r"), pipes[2][0]};
}

[[noreturn]] void fail(const char* what) {
  fmt::print(stderr, "{}\n", what);
  std::exit(1);
}

struct Measurement {
  double seconds = 0;
  std::uint64_t companionBytes = 0;
};

Measurement measure(const std::string& build, const Variant& variant, int threads) {
  const Host host = startHost(build, variant.hasProbe);
  Measurement result;
  {
    Drain log(host.log);
    if (variant.hasProbe && !log.waitFor("Listener ready")) {
      fail("the probe did not start");
    }
    std::optional<Drain> companion;
    if (variant.hasCompanion) {
      const int connection = connectTo(listeningPort(host.process));
      if (connection < 0) {
        fail("the probe does not listen");
      }
      companion.emplace(connection);
      log.waitFor("Connection ready");
    }
    const std::uint64_t before = companion ? companion->bytes() : 0;
    fmt::print(host.commands, "{} {}\n", threads, lineCount);
    std::fflush(host.commands);
    char answer[64] = "";
    while (std::fgets(answer, sizeof answer, host.answers) != nullptr &&
           std::strtod(answer, nullptr) == 0) {
    }
    result.seconds = std::strtod(answer, nullptr) / 1e9;
    std::fclose(host.commands);
    ::waitpid(host.process, nullptr, 0);
    result.companionBytes = companion ? companion->bytes() - before : 0;
    std::fclose(host.answers);
    if (log.lines() < lineCount) {
      std::this_thread::sleep_for(1s);
    }
    if (log.lines() < lineCount) {
      fail("lines were lost");
    }
  }
  return result;
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

}  // namespace

int main(int argumentCount, char** arguments) {
  ::signal(SIGPIPE, SIG_IGN);
  const std::string build = argumentCount > 1 ? arguments[1] : "build/release";
  const int rounds = argumentCount > 2 ? std::atoi(arguments[2]) : 5;
  bool isWithinBounds = true;
  for (const int threads : {1, 4}) {
    std::array<std::vector<double>, variants.size()> seconds;
    std::uint64_t companionBytes = 0;
    for (int round = 0; round < rounds; ++round) {
      for (std::size_t index = 0; index < variants.size(); ++index) {
        const Measurement measurement = measure(build, variants[index], threads);
        seconds[index].push_back(measurement.seconds);
        companionBytes = std::max(companionBytes, measurement.companionBytes);
      }
    }
    fmt::print("{} lines from {} thread(s), median of {} rounds\n", lineCount, threads, rounds);
    const double baseline = median(seconds[0]);
    for (std::size_t index = 0; index < variants.size(); ++index) {
      const double ratio = median(seconds[index]) / baseline;
      isWithinBounds &= ratio <= variants[index].bound;
      fmt::print("  {:<34} {:>8.3f} s {:>7.2f}x   bound {:.0f}x\n", variants[index].name,
                 median(seconds[index]), ratio, variants[index].bound);
    }
    fmt::print("  the companion took {} bytes\n", companionBytes);
  }
  return isWithinBounds ? 0 : 1;
}
