#include "tests/companion/spawn.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace tarnix::companion {
namespace {

std::vector<std::string> environmentWith(const Variables& variables) {
  std::vector<std::string> environment;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string_view text = *entry;
    const std::string_view name = text.substr(0, text.find('='));
    const bool isReplaced =
        std::any_of(variables.begin(), variables.end(),
                    [&](const auto& variable) { return variable.first == name; });
    if (!isReplaced) {
      environment.emplace_back(text);
    }
  }
  for (const auto& [name, value] : variables) {
    environment.push_back(name + "=" + value);
  }
  return environment;
}

std::vector<char*> pointers(const std::vector<std::string>& texts) {
  std::vector<char*> result;
  for (const std::string& text : texts) {
    result.push_back(const_cast<char*>(text.c_str()));
  }
  result.push_back(nullptr);
  return result;
}

}  // namespace

pid_t spawn(const std::vector<std::string>& commandLine, const Variables& variables,
            const StandardStreams& streams) {
  const std::vector<std::string> environment = environmentWith(variables);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  const std::array<int, 3> given = {streams.input, streams.output, streams.errors};
  for (int number = 0; number < 3; ++number) {
    const int descriptor = given[static_cast<std::size_t>(number)];
    if (descriptor < 0) {
      posix_spawn_file_actions_addopen(&actions, number, "/dev/null", O_RDWR, 0);
    } else {
      posix_spawn_file_actions_adddup2(&actions, descriptor, number);
    }
  }
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
  posix_spawnattr_setpgroup(&attributes, 0);
  pid_t program = -1;
  const int error = posix_spawnp(&program, commandLine.front().c_str(), &actions, &attributes,
                                 pointers(commandLine).data(), pointers(environment).data());
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&actions);
  return error == 0 ? program : -1;
}

}  // namespace tarnix::companion
