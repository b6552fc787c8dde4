// Times a scan of a program as translated by velc and of the same program written by hand.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "bench/programs/scan_pair.h"
#include "velrt.h"

namespace {

constexpr int kScans = 6400;
constexpr int kScansOfInputs = 50;  // number of scans with the same inputs
constexpr std::uint32_t kCycle = 100;

// Runs a program from its start with random changes of the inputs. Calls `after` after each scan.
template <typename After>
void run(const scan_program& program, After after) {
  std::memset(_m, 0, VEL_MEMORY_BYTES);
  program.init();
  std::uint32_t random = 1;
  for (int i = 0; i < kScans; i += kScansOfInputs) {
    random = random * 1664525 + 1013904223;
    _m[VEL_MEMORY_M] = static_cast<u8>(random >> 24 & random >> 16);
    for (int k = 0; k < kScansOfInputs; ++k) {
      vel_scan_time = kCycle * static_cast<std::uint32_t>(i + k);
      program.scan();
      after();
    }
  }
}

// The bytes of `variables`, with pointers into them made comparable by replacing them by offsets.
std::string bytes(const scan_variables& variables) {
  std::string text(static_cast<const char*>(variables.at), variables.size);
  const auto first = reinterpret_cast<std::uintptr_t>(variables.at);
  for (std::size_t i = 0; i + sizeof first <= text.size(); i += sizeof first) {
    std::uintptr_t pointer = 0;
    std::memcpy(&pointer, &text[i], sizeof pointer);
    pointer -= first;
    if (pointer < variables.size) std::memcpy(&text[i], &pointer, sizeof pointer);
  }
  return text;
}

std::string* refreshed = nullptr;

void note(char what, std::uint32_t offset, std::uint32_t count) {
  *refreshed += what + std::to_string(offset) + '-' + std::to_string(count);
}

// Hashes of the state after each scan: the variables, the memory, and the refreshed inputs and
// outputs.
std::vector<std::size_t> outcomes(const scan_program& program) {
  const vel_platform_api idle = __platform_api;
  std::string left;
  refreshed = &left;
  __platform_api.UPDATEINPUT = [](u32 offset, u32 count) { note('I', offset, count); };
  __platform_api.UPDATEOUTPUT = [](u32 offset, u32 count) { note('Q', offset, count); };
  std::vector<std::size_t> result;
  run(program, [&] {
    for (const scan_variables& variables : program.variables) left += bytes(variables);
    left.append(reinterpret_cast<const char*>(_m), VEL_MEMORY_BYTES);
    result.push_back(std::hash<std::string>{}(left));
    left.clear();
  });
  __platform_api = idle;
  return result;
}

void measure(benchmark::State& state, const scan_program& program) {
  for ([[maybe_unused]] auto iteration : state) {
    run(program, [] {});
  }
  state.SetItemsProcessed(state.iterations() * kScans);
}

}  // namespace

int main(int argc, char** argv) {
  // Runs each program once and nothing else, to count instructions.
  if (argc == 2 && std::string_view(argv[1]) == "--once") {
    for (const scan_program* program : {&translated, &by_hand}) run(*program, [] {});
    return 0;
  }
  if (outcomes(translated) != outcomes(by_hand)) {
    std::fprintf(stderr, "%s: what is written by hand does another thing\n", argv[0]);
    return 1;
  }
  benchmark::RegisterBenchmark("translated", measure, translated);
  benchmark::RegisterBenchmark("by hand", measure, by_hand);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
