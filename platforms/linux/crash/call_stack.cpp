#include "platforms/linux/crash/call_stack.h"

#include <dlfcn.h>
#include <execinfo.h>
#include <link.h>
#include <sys/uio.h>
#include <ucontext.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <string_view>

#include "platforms/linux/crash/code_location.h"

namespace tarnix::linux_platform {

namespace {

/// Of the handler that asks, of this code, and of the system's trampoline.
constexpr std::size_t handlerDepth = 16;

void* interruptedInstruction(const void* context) {
  const auto* const state = static_cast<const ucontext_t*>(context);
#if defined(__x86_64__)
  return reinterpret_cast<void*>(state->uc_mcontext.gregs[REG_RIP]);
#elif defined(__aarch64__)
  return reinterpret_cast<void*>(state->uc_mcontext.pc);
#else
  static_cast<void>(state);
  return nullptr;
#endif
}

/// The file that an address lies in, by its name alone. The loader's own list is read without the
/// lock that is held while libraries initialise themselves, since crashes happen there too.
struct FileSearch {
  std::uintptr_t address;
  std::string_view name;
};

int compareFile(dl_phdr_info* info, std::size_t, void* argument) {
  FileSearch& search = *static_cast<FileSearch*>(argument);
  for (std::size_t index = 0; index < info->dlpi_phnum; ++index) {
    const ElfW(Phdr)& segment = info->dlpi_phdr[index];
    const std::uintptr_t begin = info->dlpi_addr + segment.p_vaddr;
    if (segment.p_type == PT_LOAD && search.address - begin < segment.p_memsz) {
      const std::string_view path(info->dlpi_name);
      search.name = path.empty() ? std::string_view(program_invocation_short_name)
                                 : path.substr(path.rfind('/') + 1);
      return 1;
    }
  }
  return 0;
}

std::string_view fileOf(std::uintptr_t address) {
  FileSearch search{address, "?"};
  dl_iterate_phdr(compareFile, &search);
  return search.name;
}

/// Takes no lock.
bool isInAFile(void* address) {
  dl_find_object found{};
  return _dl_find_object(address, &found) == 0;
}

/// A call of a null or wild pointer stops before the first instruction of what is called: the
/// unwinder finds nothing there and gives up. For as long as this lives, the context is that of
/// the caller just after the call, so that the unwinder goes on from there.
class CallerOfNowhere {
 public:
  explicit CallerOfNowhere(const void* context)
      : state_(*static_cast<ucontext_t*>(const_cast<void*>(context))),
        registers_(state_.uc_mcontext) {
    if (!isInAFile(interruptedInstruction(context))) {
      leaveCall();
    }
  }
  ~CallerOfNowhere() { state_.uc_mcontext = registers_; }
  CallerOfNowhere(const CallerOfNowhere&) = delete;
  CallerOfNowhere& operator=(const CallerOfNowhere&) = delete;

 private:
  void leaveCall() {
#if defined(__x86_64__)
    // The stack pointer may be wild as well; the system reads for us what cannot crash us.
    greg_t returnAddress = 0;
    iovec here{.iov_base = &returnAddress, .iov_len = sizeof(returnAddress)};
    iovec there{.iov_base = reinterpret_cast<void*>(registers_.gregs[REG_RSP]),
                .iov_len = sizeof(returnAddress)};
    const ssize_t count = ::process_vm_readv(::getpid(), &here, 1, &there, 1, 0);
    if (count == sizeof(returnAddress) && isInAFile(reinterpret_cast<void*>(returnAddress))) {
      state_.uc_mcontext.gregs[REG_RIP] = returnAddress;
      state_.uc_mcontext.gregs[REG_RSP] += static_cast<greg_t>(sizeof(returnAddress));
    }
#elif defined(__aarch64__)
    if (isInAFile(reinterpret_cast<void*>(registers_.regs[30]))) {
      state_.uc_mcontext.pc = registers_.regs[30];
    }
#endif
  }

  ucontext_t& state_;
  const mcontext_t registers_;
};

std::string symbolOf(std::size_t number, std::uintptr_t address, bool isReturnAddress) {
  // A call may be the last instruction of its function: where it returns to is not in there.
  const std::uintptr_t inside = isReturnAddress ? address - 1 : address;
  const CodeLocation location = codeLocationOf(inside);
  std::array<char, 128> head{};
  const std::string_view file = fileOf(inside);
  std::snprintf(head.data(), head.size(), "%-3zu %-32.*s 0x%016" PRIxPTR " ", number,
                static_cast<int>(std::min<std::size_t>(file.size(), 64)), file.data(), address);
  std::string line = head.data();
  line += location.function.empty() ? "?" : location.function;
  if (location.functionStart != 0) {
    line += " + " + std::to_string(address - location.functionStart);
  }
  if (!location.sourceFile.empty()) {
    line += " (" + location.sourceFile + ":" + std::to_string(location.sourceLine) + ")";
  }
  return line;
}

}  // namespace

void prepareCallStacks() { static_cast<void>(captureCallStack()); }

CallStack captureCallStack() {
  CallStack stack;
  std::array<void*, CallStack::maximumDepth + 1> addresses{};
  const int count = ::backtrace(addresses.data(), static_cast<int>(addresses.size()));
  // Without this function itself.
  for (int index = 1; index < count; ++index) {
    stack.addresses[stack.count++] = addresses[static_cast<std::size_t>(index)];
  }
  return stack;
}

CallStack captureInterruptedCallStack(const void* context) {
  CallStack stack;
  std::array<void*, CallStack::maximumDepth + handlerDepth> addresses{};
  void* const instruction = interruptedInstruction(context);
  const CallerOfNowhere caller(context);
  void* const next = interruptedInstruction(context);
  const int depth = ::backtrace(addresses.data(), static_cast<int>(addresses.size()));
  const auto end = addresses.begin() + depth;
  const auto found = std::find(addresses.begin(), end, next);
  stack.addresses[stack.count++] = instruction;
  stack.beginsAtInstruction = true;
  // Without a trace of it the handler's own calls stay in the list, since where they end cannot be
  // told.
  for (auto address = found == end ? addresses.begin() : found + (next == instruction ? 1 : 0);
       address != end && stack.count < stack.addresses.size(); ++address) {
    stack.addresses[stack.count++] = *address;
  }
  return stack;
}

std::vector<std::string> symbolsOf(const CallStack& stack) {
  std::vector<std::string> symbols;
  symbols.reserve(stack.count);
  for (std::size_t index = 0; index < stack.count; ++index) {
    symbols.push_back(symbolOf(index, reinterpret_cast<std::uintptr_t>(stack.addresses[index]),
                               index > 0 || !stack.beginsAtInstruction));
  }
  return symbols;
}

}  // namespace tarnix::linux_platform
