// A scan of a program as velc translates it, beside the same program written by hand.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "bench/programs/scan_pair.h"
#include "velrt.h"

namespace {

constexpr int kScans = 1000;
constexpr std::uint32_t kFirstInput = std::uint32_t{8} * VEL_MEMORY_M;

// With the first input set, from which the gate opens. Leaves the variables and the
// memory as they are then.
void run(const scan_program& program) {
  std::memset(_m, 0, VEL_MEMORY_BYTES);
  sbit(kFirstInput, 1);
  program.init();
  for (int i = 0; i < kScans; ++i) program.scan();
}

std::vector<char> outcome(const scan_program& program) {
  run(program);
  const auto* variables = static_cast<const char*>(program.variables);
  std::vector<char> bytes(variables, variables + program.size);
  bytes.insert(bytes.end(), _m, _m + VEL_MEMORY_BYTES);
  return bytes;
}

void measure(benchmark::State& state, const scan_program& program) {
  run(program);
  for ([[maybe_unused]] auto iteration : state) {
    for (int i = 0; i < kScans; ++i) program.scan();
  }
  state.SetItemsProcessed(state.iterations() * kScans);
}

}  // namespace

int main(int argc, char** argv) {
  if (outcome(translated) != outcome(by_hand)) {
    std::fputs(VEL_EXAMPLE ": what is written by hand does another thing\n", stderr);
    return 1;
  }
  benchmark::RegisterBenchmark("scan|" VEL_EXAMPLE "|scan|plugin", measure, translated);
  benchmark::RegisterBenchmark("scan|" VEL_EXAMPLE "|scan|floor", measure, by_hand);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
