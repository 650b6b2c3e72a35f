#include "platforms/linux/service_advertisement.h"

#include <dlfcn.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdlib>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platforms/linux/descriptor.h"
#include "platforms/linux/dnssd/advertise.h"
#include "platforms/linux/fork_guard.h"
#include "platforms/linux/guest_thread.h"
#include "platforms/linux/module_path.h"
#include "probe/platform/diagnostics.h"

namespace tarnix::linux_platform {

namespace {

/// What taking the announcement back may cost a host that exits.
constexpr std::chrono::milliseconds exitTimeout{300};

void report(const std::string& reason) {
  platform::writeStandardError("[TarnixProbe] Not advertised: " + reason + "\n");
}

/// One announcement, shared by its owner and its thread.
struct Run {
  platform::Service service;
  std::uint16_t port = 0;
  Descriptor stop;
  std::mutex mutex;
  std::condition_variable ended;
  bool hasEnded = false;
};

/// The announcements that may still be under way, to be taken back when the host exits.
class Runs {
 public:
  static Runs& shared() {
    static Runs& instance = *new Runs;
    return instance;
  }

  void add(const std::shared_ptr<Run>& run) {
    const std::lock_guard lock(mutex_);
    runs_.push_back(run);
    if (!std::exchange(isRegistered_, true)) {
      std::atexit(handleExit);
    }
  }

  void remove(const std::shared_ptr<Run>& run) {
    const std::lock_guard lock(mutex_);
    std::erase(runs_, run);
  }

 private:
  static void handleExit() {
    if (fork_guard::isInChild()) {
      return;
    }
    std::vector<std::shared_ptr<Run>> runs;
    {
      const std::lock_guard lock(shared().mutex_);
      runs = shared().runs_;
    }
    const auto deadline = std::chrono::steady_clock::now() + exitTimeout;
    for (const std::shared_ptr<Run>& run : runs) {
      eventfd_write(run->stop.get(), 1);
      std::unique_lock lock(run->mutex);
      run->ended.wait_until(lock, deadline, [&] { return run->hasEnded; });
    }
  }

  std::mutex mutex_;
  std::vector<std::shared_ptr<Run>> runs_;
  bool isRegistered_ = false;
};

/// The system's mDNS daemon is asked over the system's message bus.
constexpr const char* daemonModule = "libtarnixprobe-dnssd.so";
constexpr const char* responderModule = "libtarnixprobe-mdns.so";

/// A label of a domain name has no more bytes.
constexpr std::size_t maximumLabelSize = 63;

/// The longest start of `name` that a label can hold, without a cut inside of a character.
std::string label(std::string_view name) {
  std::size_t size = std::min(name.size(), maximumLabelSize);
  while (size < name.size() && size > 0 &&
         (static_cast<unsigned char>(name[size]) & 0xC0) == 0x80) {
    --size;
  }
  return std::string(name.substr(0, size));
}

/// Why the last way of announcing did not work. Touched by the announcing thread whose turn it is.
std::string& lastReason() {
  static std::string& reason = *new std::string;
  return reason;
}

void setLastReason(const char* reason) { lastReason() = reason; }

/// Whether asking the bus is worth loading what it takes.
bool hasMessageBus() {
  return std::getenv("DBUS_SYSTEM_BUS_ADDRESS") != nullptr ||
         ::access("/run/dbus/system_bus_socket", F_OK) == 0 ||
         ::access("/var/run/dbus/system_bus_socket", F_OK) == 0;
}

/// What lies in a module, or null. The modules stay loaded: what they brought with them may not be
/// unloadable.
AdvertiseEntry loadModule(const char* name, int flags) {
  void* const module =
      dlopen(modulePath(name).c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE | flags);
  void* const entry = module == nullptr ? nullptr : dlsym(module, advertiseEntryName);
  if (entry == nullptr) {
    const char* const error = dlerror();
    setLastReason(error != nullptr ? error : "the module has no entry");
  }
  return reinterpret_cast<AdvertiseEntry>(entry);
}

/// The mDNS library and the client library of its daemon define one function of the same name and
/// different meaning. A host may bring the latter, so the former must look at itself first. An
/// address sanitizer in the host ends the process that asks for that.
int responderFlags() { return dlsym(RTLD_DEFAULT, "__asan_init") == nullptr ? RTLD_DEEPBIND : 0; }

void advertise(const Run& run) {
  const std::string name = label(run.service.name);
  AdvertiseRequest request;
  request.name = name.c_str();
  request.type = run.service.type.c_str();
  request.port = run.port;
  request.stopDescriptor = run.stop.get();
  request.report = setLastReason;
  request.closeInChild = fork_guard::closeInChild;
  request.forget = fork_guard::forget;
  // First, also where the daemon is asked: both modules share a library, and only what this one
  // brings keeps off the host's sequence of random numbers.
  const AdvertiseEntry responder = loadModule(responderModule, responderFlags());
  if (hasMessageBus()) {
    const AdvertiseEntry daemon = loadModule(daemonModule, 0);
    if (daemon != nullptr && daemon(&request) == AdvertiseOutcome::stopped) {
      return;
    }
  }
  if (responder == nullptr || responder(&request) == AdvertiseOutcome::unavailable) {
    report(lastReason());
  }
}

void* threadEntry(void* argument) {
  const std::unique_ptr<std::shared_ptr<Run>> holder(static_cast<std::shared_ptr<Run>*>(argument));
  const std::shared_ptr<Run> run = *holder;
  {
    // One after the other: an announcement that is being taken back still holds the name.
    static std::mutex& turn = *new std::mutex;
    const std::lock_guard lock(turn);
    try {
      advertise(*run);
    } catch (...) {
      // Memory ran out. The service is served all the same.
    }
  }
  Runs::shared().remove(run);
  const std::lock_guard lock(run->mutex);
  run->hasEnded = true;
  run->ended.notify_all();
  return nullptr;
}

class ThreadedAdvertisement final : public ServiceAdvertisement {
 public:
  explicit ThreadedAdvertisement(std::shared_ptr<Run> run) : run_(std::move(run)) {}

  ~ThreadedAdvertisement() override {
    if (!fork_guard::isInChild()) {
      eventfd_write(run_->stop.get(), 1);
    }
  }

 private:
  const std::shared_ptr<Run> run_;
};

}  // namespace

std::unique_ptr<ServiceAdvertisement> ServiceAdvertisement::start(const platform::Service& service,
                                                                  std::uint16_t port) {
  const auto run = std::make_shared<Run>();
  run->service = service;
  run->port = port;
  run->stop = Descriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
  if (!run->stop.isOpen()) {
    report("the process is out of descriptors");
    return nullptr;
  }
  Runs::shared().add(run);
  auto argument = std::make_unique<std::shared_ptr<Run>>(run);
  const std::optional<pthread_t> thread =
      startGuestThread("tarnix.dnssd", threadEntry, argument.get());
  if (!thread) {
    Runs::shared().remove(run);
    report("the system starts no thread");
    return nullptr;
  }
  static_cast<void>(argument.release());
  pthread_detach(*thread);
  return std::make_unique<ThreadedAdvertisement>(run);
}

}  // namespace tarnix::linux_platform
