// How fast the wire is: frames cut from a stream, messages encoded and decoded, and a full sync
// made ready to send, each against copying the same bytes.

#include <benchmark/benchmark.h>

#include <string>

#include "bench/ratio_reporter.h"
#include "bench/sample_sync.h"
#include "probe/link/companion_framer.h"
#include "probe/link/companion_message.h"

namespace tarnix::bench {
namespace {

constexpr std::size_t frameCount = 1000;
constexpr std::size_t readSize = 65'536;

CompanionMessage logMessage() {
  return *CompanionMessage::make(CompanionMessageType::eventLog,
                                 sampleSync(1, 0, 0).logEntries.front(), Timestamp{785e6});
}

std::string frameOf(const CompanionMessage& message) {
  return *CompanionFramer::finishOutput(*message.encodeEnvelope(CompanionFramer::roomForHeader()));
}

const std::string& stream() {
  static const std::string& instance = *[] {
    auto* text = new std::string;
    const std::string frame = frameOf(logMessage());
    for (std::size_t index = 0; index < frameCount; ++index) {
      text->append(frame);
    }
    return text;
  }();
  return instance;
}

void countBytes(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * state.iterations());
}

void copyStream(benchmark::State& state) {
  for (auto _ : state) {
    std::string copy(stream());
    benchmark::DoNotOptimize(copy);
  }
  countBytes(state, stream().size());
}

void cutFrames(benchmark::State& state) {
  for (auto _ : state) {
    CompanionFramer framer;
    std::size_t bodies = 0;
    for (std::size_t start = 0; start < stream().size(); start += readSize) {
      framer.handleInput(std::string_view(stream()).substr(start, readSize));
      while (framer.nextBody()) {
        ++bodies;
      }
    }
    if (bodies != frameCount) {
      state.SkipWithError("frames were lost");
    }
  }
  countBytes(state, stream().size());
}

void cutAndDecode(benchmark::State& state) {
  for (auto _ : state) {
    CompanionFramer framer;
    framer.handleInput(stream());
    std::size_t entries = 0;
    while (const auto body = framer.nextBody()) {
      const auto message = CompanionMessage::decodeEnvelope(*body);
      if (message && message->decode<TransferableLogEntry>()) {
        ++entries;
      }
    }
    if (entries != frameCount) {
      state.SkipWithError("messages were lost");
    }
  }
  countBytes(state, stream().size());
}

void encodeMessages(benchmark::State& state) {
  const TransferableLogEntry entry = sampleSync(1, 0, 0).logEntries.front();
  for (auto _ : state) {
    for (std::size_t index = 0; index < frameCount; ++index) {
      const auto message =
          CompanionMessage::make(CompanionMessageType::eventLog, entry, Timestamp{785e6});
      benchmark::DoNotOptimize(frameOf(*message));
    }
  }
  countBytes(state, stream().size());
}

BENCHMARK(copyStream)->Name("1000 log events/copy the bytes");
BENCHMARK(cutFrames)->Name("1000 log events/cut into frames");
BENCHMARK(cutAndDecode)->Name("1000 log events/cut and decode into records");
BENCHMARK(encodeMessages)->Name("1000 log events/encode and frame");

/// What reaches the wire of a sync with the given body sizes.
std::string syncFrame(const FullSyncPayload& sync) {
  const auto message =
      CompanionMessage::make(CompanionMessageType::syncFull, sync, Timestamp{785e6});
  return frameOf(*message);
}

void copySync(benchmark::State& state, std::size_t requestBody, std::size_t responseBody) {
  const std::string frame = syncFrame(sampleSync(500, requestBody, responseBody));
  for (auto _ : state) {
    std::string copy(frame);
    benchmark::DoNotOptimize(copy);
  }
  countBytes(state, frame.size());
}

void encodeSync(benchmark::State& state, std::size_t requestBody, std::size_t responseBody) {
  const FullSyncPayload sync = sampleSync(500, requestBody, responseBody);
  std::size_t size = 0;
  for (auto _ : state) {
    size = syncFrame(sync).size();
    benchmark::DoNotOptimize(size);
  }
  countBytes(state, size);
}

BENCHMARK_CAPTURE(copySync, usual, 0, 1024)->Name("sync of 500+500/copy its bytes");
BENCHMARK_CAPTURE(encodeSync, usual, 0, 1024)->Name("sync of 500+500/encode and frame");
BENCHMARK_CAPTURE(copySync, largest, 65'536, 4096)->Name("largest sync of 500+500/copy its bytes");
BENCHMARK_CAPTURE(encodeSync, largest, 65'536, 4096)
    ->Name("largest sync of 500+500/encode and frame");

}  // namespace
}  // namespace tarnix::bench

int main(int argc, char** argv) { return tarnix::bench::runBenchmarks(argc, argv); }
