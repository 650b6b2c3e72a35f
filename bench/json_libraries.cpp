// Which JSON library the wire is built on: the same two messages, a full sync of 500 exchanges
// going out and a command coming in, through three libraries. Each starts from the records and
// their field lists and ends at the text, or the other way round.

#include <benchmark/benchmark.h>
#include <simdjson.h>

#include <nlohmann/json.hpp>
#include <string>

#include "bench/ratio_reporter.h"
#include "bench/sample_sync.h"
#include "probe/link/json_codec.h"

namespace tarnix::bench {
namespace {

struct SwipeCommand {
  std::int64_t x1 = 0;
  std::int64_t y1 = 0;
  std::int64_t x2 = 0;
  std::int64_t y2 = 0;
  std::optional<double> duration;

  static constexpr auto fields() {
    return std::tuple{Field{"x1", &SwipeCommand::x1}, Field{"y1", &SwipeCommand::y1},
                      Field{"x2", &SwipeCommand::x2}, Field{"y2", &SwipeCommand::y2},
                      Field{"duration", &SwipeCommand::duration}};
  }
};

const std::string commandText = R"({"x1":100,"y1":640,"x2":100,"y2":120,"duration":0.35})";

const FullSyncPayload& sync() {
  static const FullSyncPayload& instance = *new FullSyncPayload(sampleSync(500, 256, 1024));
  return instance;
}

template <Record R>
nlohmann::json toTree(const R& record);

template <class T>
nlohmann::json valueToTree(const T& value) {
  if constexpr (Record<T>) {
    return toTree(value);
  } else if constexpr (std::is_same_v<T, Bytes>) {
    return encodeBase64(value.data);
  } else if constexpr (std::is_same_v<T, Timestamp>) {
    return value.secondsSinceReference;
  } else if constexpr (StringCoded<T>) {
    return std::string(StringCoding<T>::toString(value));
  } else if constexpr (requires(T list) { list.push_back(list.front()); } &&
                       !std::is_same_v<T, std::string>) {
    nlohmann::json array = nlohmann::json::array();
    for (const auto& element : value) {
      array.push_back(valueToTree(element));
    }
    return array;
  } else {
    return value;
  }
}

template <Record R>
nlohmann::json toTree(const R& record) {
  nlohmann::json object = nlohmann::json::object();
  const auto add = [&](const auto& field) {
    const auto& value = record.*field.member;
    if constexpr (json::isOptional<std::remove_cvref_t<decltype(value)>>) {
      if (value) {
        object[field.name] = valueToTree(*value);
      }
    } else {
      object[field.name] = valueToTree(value);
    }
  };
  std::apply([&](const auto&... field) { (add(field), ...); }, R::fields());
  return object;
}

void encodeWithRapidJson(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(encodeJson(sync()));
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(encodeJson(sync())->size()) *
                          state.iterations());
}

void encodeWithNlohmann(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(toTree(sync()).dump());
  }
}

void decodeWithRapidJson(benchmark::State& state) {
  for (auto _ : state) {
    const auto command = decodeJson<SwipeCommand>(commandText);
    if (!command || command->y1 != 640) {
      state.SkipWithError("wrong result");
    }
  }
}

void decodeWithNlohmann(benchmark::State& state) {
  for (auto _ : state) {
    const auto tree = nlohmann::json::parse(commandText);
    SwipeCommand command;
    tree.at("x1").get_to(command.x1);
    tree.at("y1").get_to(command.y1);
    tree.at("x2").get_to(command.x2);
    tree.at("y2").get_to(command.y2);
    if (tree.contains("duration")) {
      command.duration = tree["duration"].get<double>();
    }
    if (command.y1 != 640) {
      state.SkipWithError("wrong result");
    }
  }
}

void decodeWithSimdjson(benchmark::State& state) {
  simdjson::ondemand::parser parser;
  for (auto _ : state) {
    // The library reads past the end of its input, so a received body has to be copied first.
    const simdjson::padded_string padded(commandText);
    auto document = parser.iterate(padded);
    SwipeCommand command;
    const bool failed = document["x1"].get(command.x1) != simdjson::SUCCESS ||
                        document["y1"].get(command.y1) != simdjson::SUCCESS ||
                        document["x2"].get(command.x2) != simdjson::SUCCESS ||
                        document["y2"].get(command.y2) != simdjson::SUCCESS;
    double duration = 0;
    if (document["duration"].get(duration) == simdjson::SUCCESS) {
      command.duration = duration;
    }
    if (failed || command.y1 != 640) {
      state.SkipWithError("wrong result");
    }
  }
}

BENCHMARK(encodeWithRapidJson)->Name("encode a sync/RapidJSON (used)");
BENCHMARK(encodeWithNlohmann)->Name("encode a sync/nlohmann");
BENCHMARK(decodeWithRapidJson)->Name("decode a command/RapidJSON (used)");
BENCHMARK(decodeWithNlohmann)->Name("decode a command/nlohmann");
BENCHMARK(decodeWithSimdjson)->Name("decode a command/simdjson, decoding only");

}  // namespace
}  // namespace tarnix::bench

int main(int argc, char** argv) { return tarnix::bench::runBenchmarks(argc, argv); }
