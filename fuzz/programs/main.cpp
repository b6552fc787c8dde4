// random_programs: runs random programs and compares what they give with what they should.
#include <fmt/format.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fstream>

#include "cli/termination_guard.h"
#include "fuzz/programs/generator.h"
#include "fuzz/programs/runner.h"

namespace generated {
namespace {

int execute(int argc, char** argv) {
  std::uint64_t count = 100;
  std::uint64_t seed = 1;
  std::uint64_t batch = 50;
  std::string summary;
  bool print = false;
  Toolchain toolchain;
  CLI::App app("Runs random programs and compares what they give with what they should.");
  app.add_option("--count", count, "how many")->capture_default_str();
  app.add_option("--seed", seed, "of the first; the others follow")->capture_default_str();
  app.add_option("--compiler", toolchain.compiler, "the C compiler")->capture_default_str();
  app.add_option("--batch", batch, "programs in one source file")->capture_default_str();
  app.add_option("--summary", summary, "a file for the closing line");
  app.add_flag("--sanitize", toolchain.sanitize, "with address and undefined-behaviour sanitizers");
  app.add_flag("--print", print, "print the programs only");
  CLI11_PARSE(app, argc, argv);

  std::uint64_t failed = 0;
  for (std::uint64_t done = 0; done < count;) {
    std::vector<Units> programs;
    const std::uint64_t size = std::min(batch, count - done);
    for (std::uint64_t i = 0; i < size; ++i) {
      programs.push_back(generate(seed + done + i, fmt::format("_{}", seed + done + i)));
      if (print) fmt::print("{}\n", text(programs.back()));
    }
    if (!print && !run(programs, toolchain).empty()) {
      for (std::uint64_t i = 0; i < size; ++i) {
        const std::string wrong = run({programs[i]}, toolchain);
        if (wrong.empty()) continue;
        fmt::print("seed {} fails:\n{}\n{}\n", seed + done + i, wrong, text(programs[i]));
        std::fflush(stdout);
        ++failed;
      }
    }
    done += size;
    if (isatty(STDERR_FILENO) == 1) fmt::print(stderr, "\r{} of {}", done, count);
  }
  if (print) return 0;
  const std::string line = fmt::format("{} random programs, seed {}, {}: {} failed\n", count, seed,
                                       toolchain.compiler, failed);
  fmt::print("{}", line);
  if (!summary.empty() && failed == 0) std::ofstream(summary) << line;
  return failed == 0 ? 0 : 1;
}

}  // namespace
}  // namespace generated

int main(int argc, char** argv) {
  try {
    return generated::execute(argc, argv);
  } catch (const velc::Terminated&) {
    return 2;
  } catch (const std::exception& error) {
    fmt::print(stderr, "random_programs: {}\n", error.what());
    return 2;
  }
}
