#include <dlfcn.h>
#include <errno.h>
#include <pthread.h>
#include <stdlib.h>

#include "platforms/linux/preload/host_state.h"
#include "platforms/linux/thread_signal_stack.h"

/// Threads of the host get a stack for signal handlers when they start: a stack that has overflowed
/// has no room for the handler that is to report it, and from outside a thread no stack can be
/// given to it.
namespace tarnix::linux_platform {

namespace {

using Entry = void* (*)(void*);
using CreateThread = int (*)(pthread_t*, const pthread_attr_t*, Entry, void*);

struct Start {
  Entry entry;
  void* argument;
};

void* run(void* memory) {
  const Start start = *static_cast<Start*>(memory);
  free(memory);
  giveSignalStackToThisThread();
  return start.entry(start.argument);
}

CreateThread systemsOwn() {
  static const CreateThread function =
      reinterpret_cast<CreateThread>(dlsym(RTLD_NEXT, "pthread_create"));
  return function;
}

}  // namespace

}  // namespace tarnix::linux_platform

extern "C" [[gnu::visibility("default")]] int pthread_create(pthread_t* thread,
                                                             const pthread_attr_t* attributes,
                                                             void* (*entry)(void*),
                                                             void* argument) noexcept {
  using namespace tarnix::linux_platform;
  const CreateThread create = systemsOwn();
  if (create == nullptr) {
    return EAGAIN;
  }
  Start* const start = isInHost() ? static_cast<Start*>(malloc(sizeof(Start))) : nullptr;
  if (start == nullptr) {
    return create(thread, attributes, entry, argument);
  }
  *start = {entry, argument};
  const int error = create(thread, attributes, run, start);
  if (error != 0) {
    free(start);
  }
  return error;
}
