#include "cli/tests/test_build.h"

#include <fmt/format.h>

#include <chrono>
#include <future>

#include "cli/failure.h"
#include "cli/paths.h"
#include "cli/process.h"
#include "cli/progress.h"

namespace velc {

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds kTimeout{120};

void runCompiler(const std::string& compiler, const std::vector<std::string>& arguments,
                 const TerminationGuard& guard) {
  std::vector<std::string> command{compiler};
  command.insert(command.end(), arguments.begin(), arguments.end());
  const ProcessResult result = runProcess(command, guard, kTimeout);
  if (result.succeeded()) return;
  if (result.end == ProcessResult::End::TimedOut) {
    throw Failure(
        fmt::format("the C compiler '{}' did not end within {} s", compiler, kTimeout.count()));
  }
  throw Failure(fmt::format("the C compiler '{}' failed:\n{}", compiler, result.output));
}

std::vector<std::string> flags(const TestBuild& build) {
  // The time of a test is mostly that of its compilation.
  std::vector<std::string> flags{"-std=gnu11", "-O0", "-c", "-I" + includeFolder().native()};
  const bool clang =
      fs::path(build.compiler).filename().native().find("clang") != std::string::npos;
  if (clang) flags.push_back("-fbracket-depth=10000");
  if (build.strict) flags.push_back("-DVEL_STRICT");
  // Units that no test calls count, too.
  if (build.coverage) flags.insert(flags.end(), {"--coverage", "-fkeep-static-functions"});
  return flags;
}

}  // namespace

std::vector<fs::path> buildTests(const fs::path& folder, const std::vector<fs::path>& sources,
                                 const TestBuild& build, const TerminationGuard& guard) {
  const Progress progress("compiling");
  std::vector<std::string> link{"-o", folder / "tests"};
  std::vector<fs::path> objects;
  std::vector<std::future<void>> compilations;
  for (const fs::path& source : sources) {
    std::vector<std::string> arguments = flags(build);
    objects.push_back(fs::path(source).replace_extension(".o"));
    arguments.insert(arguments.end(), {source, "-o", objects.back()});
    link.push_back(objects.back());
    compilations.push_back(
        std::async(std::launch::async, [&build, &guard, arguments = std::move(arguments)] {
          runCompiler(build.compiler, arguments, guard);
        }));
  }
  for (std::future<void>& compilation : compilations) compilation.get();
  link.insert(link.end(), {libraryPath("libvelrun.a"), libraryPath("libvelrt.a"), "-lm"});
  if (build.coverage) link.emplace_back("--coverage");
  runCompiler(build.compiler, link, guard);
  return objects;
}

}  // namespace velc
