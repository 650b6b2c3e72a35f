#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "probe/link/record.h"
#include "probe/model/uuid.h"

/// What commands print with --json where it is not a message of the probe's own. Keys stay; new
/// ones may be added.
namespace tarnix::companion {

struct ListedHost {
  /// The executable's name, or empty.
  std::string application;
  /// The name of the announcement, or empty.
  std::string name;
  std::optional<std::int64_t> pid;
  std::uint64_t port = 0;

  static constexpr auto fields() {
    return std::tuple{Field{"application", &ListedHost::application},
                      Field{"name", &ListedHost::name}, Field{"pid", &ListedHost::pid},
                      Field{"port", &ListedHost::port}};
  }
};

/// Of `tarnix list`.
struct HostList {
  std::vector<ListedHost> hosts;

  static constexpr auto fields() { return std::tuple{Field{"hosts", &HostList::hosts}}; }
};

/// Of `tarnix mock add` and `tarnix intercept add`.
struct RuleAdded {
  Uuid ruleId;

  static constexpr auto fields() { return std::tuple{Field{"ruleId", &RuleAdded::ruleId}}; }
};

/// Of `tarnix har`, unless the archive itself goes to standard output.
struct ArchiveWritten {
  std::string file;
  std::uint64_t exchangeCount = 0;

  static constexpr auto fields() {
    return std::tuple{Field{"file", &ArchiveWritten::file},
                      Field{"exchangeCount", &ArchiveWritten::exchangeCount}};
  }
};

/// Of `tarnix screenshot`, when the picture goes to a file.
struct PictureWritten {
  std::string screen;
  std::string file;

  static constexpr auto fields() {
    return std::tuple{Field{"screen", &PictureWritten::screen},
                      Field{"file", &PictureWritten::file}};
  }
};

/// Of the commands that act on an application, for each step.
struct StepDone {
  /// What was to be done, for people.
  std::string step;
  bool success = false;
  /// What came of it.
  std::string message;

  static constexpr auto fields() {
    return std::tuple{Field{"step", &StepDone::step}, Field{"success", &StepDone::success},
                      Field{"message", &StepDone::message}};
  }
};

/// Of `tarnix run`, on standard error, once the application can be reached.
struct HostReady {
  std::string application;
  std::int64_t pid = 0;
  std::uint64_t port = 0;

  static constexpr auto fields() {
    return std::tuple{Field{"application", &HostReady::application}, Field{"pid", &HostReady::pid},
                      Field{"port", &HostReady::port}};
  }
};

}  // namespace tarnix::companion
