#include "platforms/linux/preload/own_entry.h"

#include <limits.h>
#include <string.h>
#include <sys/stat.h>

namespace tarnix::linux_platform {

namespace {

constexpr const char* separators = ": \t\n";

const char* fileName(const char* path) {
  const char* const slash = strrchr(path, '/');
  return slash == nullptr ? path : slash + 1;
}

/// An entry without slash was found on the loader's search path, and one with a "$" was expanded by
/// the loader: both are known by the name of the file.
bool isOwn(const char* entry, const char* ownPath) {
  if (strchr(entry, '/') == nullptr || strchr(entry, '$') != nullptr) {
    return strcmp(fileName(entry), fileName(ownPath)) == 0;
  }
  struct stat one {};
  struct stat other {};
  return stat(entry, &one) == 0 && stat(ownPath, &other) == 0 && one.st_dev == other.st_dev &&
         one.st_ino == other.st_ino;
}

bool isOwn(const char* entry, size_t length, const char* ownPath) {
  char copy[PATH_MAX];
  if (length >= sizeof(copy)) {
    return false;
  }
  memcpy(copy, entry, length);
  copy[length] = '\0';
  return isOwn(copy, ownPath);
}

}  // namespace

bool removeOwnEntry(char* list, const char* ownPath) {
  char* entry = list + strspn(list, separators);
  while (*entry != '\0') {
    const size_t length = strcspn(entry, separators);
    char* const next = entry + length + strspn(entry + length, separators);
    if (!isOwn(entry, length, ownPath)) {
      entry = next;
      continue;
    }
    if (*next != '\0') {
      memmove(entry, next, strlen(next) + 1);
      continue;
    }
    // The last entry goes with the separators before it; what stands after it stays.
    char* end = entry;
    while (end > list && strchr(separators, end[-1]) != nullptr) {
      --end;
    }
    memmove(end, entry + length, strlen(entry + length) + 1);
    break;
  }
  return list[strspn(list, separators)] != '\0';
}

}  // namespace tarnix::linux_platform
