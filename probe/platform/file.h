#pragma once

#include <string>
#include <string_view>

namespace tarnix::platform {

enum class FileReaders {
  everybody,
  /// The user of this process alone.
  owner,
};

/// Makes a file with these contents, whole or not at all, in place of any that stands there. Never
/// writes through a symbolic link: a link at `path` is replaced, not followed. Any thread. Returns
/// whether it succeeded.
bool createFile(const std::string& path, std::string_view contents, FileReaders readers);

}  // namespace tarnix::platform
