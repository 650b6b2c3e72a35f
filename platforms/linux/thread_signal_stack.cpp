#include "platforms/linux/thread_signal_stack.h"

#include <errno.h>
#include <pthread.h>
#include <signal.h>
#include <stddef.h>
#include <sys/mman.h>

namespace tarnix::linux_platform {

namespace {

/// A signal's frame with every register of the processor, and the unwinder at work. Memory is only
/// spent once a handler runs.
constexpr size_t stackSize = 65'536;

pthread_key_t key;
bool hasKey = false;

void takeBack(void* memory) {
  stack_t current{};
  if (sigaltstack(nullptr, &current) == 0 && current.ss_sp == memory) {
    stack_t none{};
    none.ss_flags = SS_DISABLE;
    sigaltstack(&none, nullptr);
  }
  munmap(memory, stackSize);
}

void makeKey() { hasKey = pthread_key_create(&key, takeBack) == 0; }

}  // namespace

void giveSignalStackToThisThread() {
  static pthread_once_t once = PTHREAD_ONCE_INIT;
  const int savedError = errno;
  pthread_once(&once, makeKey);
  stack_t current{};
  if (hasKey && sigaltstack(nullptr, &current) == 0 && (current.ss_flags & SS_DISABLE) != 0) {
    void* const memory = mmap(nullptr, stackSize, PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK | MAP_NORESERVE, -1, 0);
    if (memory != MAP_FAILED) {
      stack_t own{};
      own.ss_sp = memory;
      own.ss_size = stackSize;
      if (pthread_setspecific(key, memory) != 0 || sigaltstack(&own, nullptr) != 0) {
        pthread_setspecific(key, nullptr);
        munmap(memory, stackSize);
      }
    }
  }
  errno = savedError;
}

}  // namespace tarnix::linux_platform
