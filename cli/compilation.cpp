#include "cli/compilation.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <future>
#include <utility>

#include "cli/failure.h"
#include "cli/paths.h"
#include "cli/progress.h"

namespace velc {

namespace fs = std::filesystem;

std::string signalText(int signal) {
  return fmt::format("signal {} ({})", signal, strsignal(signal));
}

std::string quotedOutput(const std::string& output) {
  return output.empty() ? "" : ":\n" + output.substr(0, output.find_last_not_of('\n') + 1);
}

bool isClang(const std::string& compiler) {
  const auto hasName = [](const fs::path& path) {
    return path.filename().native().find("clang") != std::string::npos;
  };
  if (hasName(compiler)) return true;
  const char* const variable = std::getenv("PATH");
  std::string folders = variable != nullptr ? variable : "";
  if (compiler.find('/') != std::string::npos) folders = fs::current_path();
  for (std::size_t at = 0; at <= folders.size();) {
    const std::size_t end = std::min(folders.find(':', at), folders.size());
    const fs::path path = fs::path(folders.substr(at, end - at)) / compiler;
    std::error_code failed;
    if (fs::exists(path, failed)) return hasName(fs::canonical(path, failed));
    at = end + 1;
  }
  return false;
}

namespace {

std::vector<std::string> flagsOf(const Compilation& compilation) {
  // Otherwise compilers leave out code that uses a null pointer, and the program goes on.
  std::vector<std::string> flags{"-std=gnu11", "-fno-delete-null-pointer-checks",
                                 "-I" + includeFolder().native()};
  flags.insert(flags.end(), compilation.flags.begin(), compilation.flags.end());
  if (isClang(compilation.compiler)) {
    // Unlike gcc, clang allows only 256 levels of brackets unless it is told otherwise, and leaves
    // out loops that have no effect, although they may never end.
    flags.insert(flags.end(), {"-fbracket-depth=10000", "-fno-finite-loops"});
  } else {
    // The analysis of pointers takes gcc a time that grows with the square of a unit's string
    // statements.
    flags.emplace_back("-fno-tree-pta");
  }
  return flags;
}

// Makes `result`.
void runCompiler(std::vector<std::string> arguments, const fs::path& result,
                 const Compilation& compilation, const TerminationGuard& guard) {
  const std::string& compiler = compilation.compiler;
  arguments.insert(arguments.begin(), compiler);
  arguments.insert(arguments.end(), {"-o", result});
  const ProcessResult process = runProcess(arguments, guard, compilation.timeout);
  if (process.succeeded()) {
    if (fs::exists(result)) return;
    throw Failure(fmt::format("the C compiler '{}' made no program", compiler));
  }
  if (process.end == ProcessResult::End::TimedOut) {
    throw Failure(fmt::format("the C compiler '{}' did not end within {} s (--timeout)", compiler,
                              compilation.timeout.count()));
  }
  throw Failure(fmt::format("the C compiler '{}' failed with {}{}", compiler,
                            process.end == ProcessResult::End::Signalled
                                ? signalText(process.code)
                                : fmt::format("status {}", process.code),
                            quotedOutput(process.output)));
}

void addLibraries(std::vector<std::string>& arguments) {
  arguments.insert(arguments.end(), {libraryPath("libvelrun.a"), libraryPath("libvelrt.a"), "-lm"});
}

}  // namespace

void compileProgram(const fs::path& source, const fs::path& program, const Compilation& compilation,
                    const TerminationGuard& guard) {
  const Progress progress("compiling");
  std::vector<std::string> arguments = flagsOf(compilation);
  arguments.push_back(source);
  addLibraries(arguments);
  runCompiler(std::move(arguments), program, compilation, guard);
}

std::vector<fs::path> compileParts(const std::vector<fs::path>& sources, const fs::path& program,
                                   const Compilation& compilation, const TerminationGuard& guard) {
  const Progress progress("compiling");
  std::vector<fs::path> objects;
  std::vector<std::future<void>> compilations;
  for (const fs::path& source : sources) {
    objects.push_back(fs::path(source).replace_extension(".o"));
    std::vector<std::string> arguments = flagsOf(compilation);
    arguments.insert(arguments.end(), {"-c", source});
    compilations.push_back(std::async(
        std::launch::async, [&, object = objects.back(), arguments = std::move(arguments)] {
          runCompiler(arguments, object, compilation, guard);
        }));
  }
  for (std::future<void>& part : compilations) part.get();
  std::vector<std::string> arguments = flagsOf(compilation);
  arguments.insert(arguments.end(), objects.begin(), objects.end());
  addLibraries(arguments);
  runCompiler(std::move(arguments), program, compilation, guard);
  return objects;
}

}  // namespace velc
