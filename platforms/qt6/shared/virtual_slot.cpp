#include "platforms/qt6/shared/virtual_slot.h"

#include <dlfcn.h>
#include <link.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <span>

namespace tarnix::qt6 {

namespace {

/// The table with what stands in front of its functions; empty when there is none.
std::span<void*> findTable(void* library, const char* name) {
  void* const address = dlsym(library, name);
  Dl_info image{};
  const ElfW(Sym)* symbol = nullptr;
  if (address == nullptr ||
      dladdr1(address, &image, static_cast<void**>(static_cast<void*>(&symbol)), RTLD_DL_SYMENT) ==
          0 ||
      symbol == nullptr) {
    return {};
  }
  return {static_cast<void**>(address), symbol->st_size / sizeof(void*)};
}

struct Protection {
  std::uintptr_t address;
  /// As `mprotect` has it.
  int flags = PROT_READ;
};

/// How the page at an address was protected once its library was loaded.
int protectionOf(std::uintptr_t address) {
  Protection found{address};
  dl_iterate_phdr(
      [](dl_phdr_info* info, std::size_t, void* data) {
        Protection& wanted = *static_cast<Protection*>(data);
        const std::span segments(info->dlpi_phdr, info->dlpi_phnum);
        bool isHere = false;
        bool isWritable = false;
        bool isReadOnlyAfterLoading = false;
        for (const ElfW(Phdr) & segment : segments) {
          const std::uintptr_t begin = info->dlpi_addr + segment.p_vaddr;
          if (wanted.address < begin || wanted.address - begin >= segment.p_memsz) {
            continue;
          }
          isHere |= segment.p_type == PT_LOAD;
          isWritable |= segment.p_type == PT_LOAD && (segment.p_flags & PF_W) != 0;
          isReadOnlyAfterLoading |= segment.p_type == PT_GNU_RELRO;
        }
        if (isHere && isWritable && !isReadOnlyAfterLoading) {
          wanted.flags = PROT_READ | PROT_WRITE;
        }
        return isHere ? 1 : 0;
      },
      &found);
  return found.flags;
}

bool write(void** slot, void* value) {
  const auto pageSize = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  const auto address = reinterpret_cast<std::uintptr_t>(slot);
  void* const page = reinterpret_cast<void*>(address / pageSize * pageSize);
  if (mprotect(page, pageSize, PROT_READ | PROT_WRITE) != 0) {
    return false;
  }
  // In one piece: other threads may be calling through the slot.
  __atomic_store_n(slot, value, __ATOMIC_RELEASE);
  mprotect(page, pageSize, protectionOf(address));
  return true;
}

}  // namespace

bool replaceVirtualSlot(void* library, const char* tableName, void* function, void* orFunction,
                        void* replacement) {
  bool anyReplaced = false;
  for (void*& slot : findTable(library, tableName)) {
    if (slot != nullptr && (slot == function || slot == orFunction)) {
      anyReplaced |= write(&slot, replacement);
    }
  }
  return anyReplaced;
}

}  // namespace tarnix::qt6
