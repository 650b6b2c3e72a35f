#pragma once

#include <string>
#include <tuple>
#include <vector>

#include "companion/command/har_message.h"
#include "probe/link/record.h"
#include "probe/model/transferable_network_request.h"

/// The HTTP archive format, version 1.2, as far as it is written here. Names are the format's own.
namespace tarnix::companion::har {

struct Cache {
  static constexpr auto fields() { return std::tuple<>{}; }
};

/// Milliseconds. What is not known is counted as waiting.
struct Timings {
  double send = 0;
  double wait = 0;
  double receive = 0;

  static constexpr auto fields() {
    return std::tuple{Field{"send", &Timings::send}, Field{"wait", &Timings::wait},
                      Field{"receive", &Timings::receive}};
  }
};

struct Entry {
  std::string startedDateTime;
  /// Milliseconds.
  double time = 0;
  Request request;
  Response response;
  Cache cache;
  Timings timings;

  static constexpr auto fields() {
    return std::tuple{Field{"startedDateTime", &Entry::startedDateTime},
                      Field{"time", &Entry::time},
                      Field{"request", &Entry::request},
                      Field{"response", &Entry::response},
                      Field{"cache", &Entry::cache},
                      Field{"timings", &Entry::timings}};
  }
};

struct Creator {
  std::string name;
  std::string version;

  static constexpr auto fields() {
    return std::tuple{Field{"name", &Creator::name}, Field{"version", &Creator::version}};
  }
};

struct Log {
  std::string version = "1.2";
  Creator creator;
  std::vector<Entry> entries;

  static constexpr auto fields() {
    return std::tuple{Field{"version", &Log::version}, Field{"creator", &Log::creator},
                      Field{"entries", &Log::entries}};
  }
};

struct Archive {
  Log log;

  static constexpr auto fields() { return std::tuple{Field{"log", &Archive::log}}; }
};

/// Entries stand in the order in which the exchanges began.
Archive archiveOf(const std::vector<TransferableNetworkRequest>& exchanges);

}  // namespace tarnix::companion::har
