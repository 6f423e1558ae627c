// Saving a compressed member again after one of its segments has changed, against compressing all
// of it.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <random>
#include <vector>

#include "data/archive_segments.h"

namespace mw {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Clock = std::chrono::steady_clock;

// As large as the height map of a level with 512 x 512 samples, and as smooth.
Bytes HeightMapBytes() {
  Bytes bytes(std::size_t{512} << 10);
  std::minstd_rand random(1);
  int height = 128 * 256;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    height = std::clamp(height + static_cast<int>(random() % 129) - 64, 0, 65535);
    bytes[i] = static_cast<std::uint8_t>(height);
    bytes[i + 1] = static_cast<std::uint8_t>(height >> 8);
  }
  return bytes;
}

struct Edit {
  Bytes before = HeightMapBytes(), after = before;
  Bytes stored = *CompressMember(before, {});
  Edit() { after[5 * kSegmentSize] ^= 1; }
};

const Edit& OneSegmentEdit() {
  static const Edit edit;
  return edit;
}

void CompressOnlyWhatChanged(benchmark::State& state) {
  const Edit& edit = OneSegmentEdit();
  for (auto _ : state) benchmark::DoNotOptimize(CompressMember(edit.after, edit.stored));
}
BENCHMARK(CompressOnlyWhatChanged)->UseRealTime()->Unit(benchmark::kMillisecond);

void CompressEverything(benchmark::State& state) {
  const Edit& edit = OneSegmentEdit();
  for (auto _ : state) benchmark::DoNotOptimize(CompressMember(edit.after, {}));
}
BENCHMARK(CompressEverything)->UseRealTime()->Unit(benchmark::kMillisecond);

// Both in turn, so that the ratio comes from the same moments of the machine.
void RatioEverythingToChanged(benchmark::State& state) {
  const Edit& edit = OneSegmentEdit();
  Clock::duration changed{}, everything{};
  for (auto _ : state) {
    const auto start = Clock::now();
    benchmark::DoNotOptimize(CompressMember(edit.after, edit.stored));
    const auto middle = Clock::now();
    benchmark::DoNotOptimize(CompressMember(edit.after, {}));
    changed += middle - start;
    everything += Clock::now() - middle;
  }
  state.counters["ratio"] =
      static_cast<double>(everything.count()) / static_cast<double>(changed.count());
}
BENCHMARK(RatioEverythingToChanged)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace mw
