#include <dlfcn.h>
#include <limits.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include "platforms/linux/core_module/core_entry.h"
#include "platforms/linux/pipe_signal_guard.h"
#include "platforms/linux/preload/host_check.h"
#include "platforms/linux/preload/host_state.h"
#include "platforms/linux/preload/interposed_calls.h"
#include "platforms/linux/preload/own_entry.h"

/// What is loaded into every process below the one that was given the probe, shells and all. So it
/// links nothing but the C library, and brings the rest only into a host.
namespace tarnix::linux_platform {

namespace {

constexpr char coreModule[] = "libtarnixprobe-core.so";

/// Null in processes that are no hosts, and in hosts in which the core cannot run.
constinit const CoreEntryPoints* core = nullptr;

/// The file that holds this code, without links on the way to it.
bool findOwnPath(char (&path)[PATH_MAX]) {
  static const char anchor = 0;
  Dl_info image{};
  return dladdr(&anchor, &image) != 0 && image.dli_fname != nullptr &&
         realpath(image.dli_fname, path) != nullptr;
}

/// Children of the host are not to be probed.
void clearEnvironment(const char* ownPath) {
  char* const list = getenv("LD_PRELOAD");
  if (list != nullptr && !removeOwnEntry(list, ownPath)) {
    unsetenv("LD_PRELOAD");
  }
}

void report(const char* reason) {
  char line[1024] = "[TarnixProbe] Cannot load ";
  const char* const parts[] = {coreModule, ": ", reason};
  for (const char* part : parts) {
    strncat(line, part, sizeof(line) - strlen(line) - 2);
  }
  const size_t length = strlen(line);
  line[length] = '\n';
  const PipeSignalGuard guard;
  static_cast<void>(!write(STDERR_FILENO, line, length + 1));
}

const CoreEntryPoints* loadCore(char (&ownPath)[PATH_MAX]) {
  char* const fileName = strrchr(ownPath, '/') + 1;
  if (fileName + sizeof(coreModule) > ownPath + sizeof(ownPath)) {
    report("its path is too long");
    return nullptr;
  }
  memcpy(fileName, coreModule, sizeof(coreModule));
  void* const module = dlopen(ownPath, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  void* const entry = module == nullptr ? nullptr : dlsym(module, coreEntryName);
  if (entry == nullptr) {
    const char* const error = dlerror();
    report(error != nullptr ? error : "it has no entry");
    return nullptr;
  }
  return reinterpret_cast<CoreEntry>(entry)(&interposedCalls());
}

}  // namespace

bool isInHost() { return core != nullptr; }

}  // namespace tarnix::linux_platform

using tarnix::linux_platform::core;

extern "C" {

[[gnu::visibility("default")]] void tarnixprobe_bootstrap(const char* reason) {
  if (core != nullptr) {
    core->bootstrap(reason);
  }
}

[[gnu::visibility("default")]] void TarnixProbeBootstrap() {
  if (core != nullptr) {
    core->startProbe();
  }
}

/// The C library hands a constructor what it hands `main`.
[[gnu::constructor]] static void tarnixprobe_constructor(int argumentCount,
                                                         const char* const* arguments) {
  using namespace tarnix::linux_platform;
  char ownPath[PATH_MAX];
  if (!isHost(argumentCount, arguments) || !findOwnPath(ownPath)) {
    return;
  }
  clearEnvironment(ownPath);
  core = loadCore(ownPath);
  tarnixprobe_bootstrap("C constructor");
}
}
