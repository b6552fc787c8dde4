#include "cli/compilation.h"

#include <fmt/format.h>

#include <cstring>

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

void compileProgram(const fs::path& source, const fs::path& program, const Compilation& compilation,
                    const TerminationGuard& guard) {
  const std::string& compiler = compilation.compiler;
  const Progress progress("compiling");
  // Otherwise compilers leave out code that uses a null pointer, and the program goes on.
  std::vector<std::string> arguments{compiler, "-std=gnu11", "-fno-delete-null-pointer-checks",
                                     "-I" + includeFolder().native()};
  arguments.insert(arguments.end(), compilation.flags.begin(), compilation.flags.end());
  arguments.insert(arguments.end(), {"-o", program, source, libraryPath("libvelrun.a"),
                                     libraryPath("libvelrt.a"), "-lm"});
  const bool clang = fs::path(compiler).filename().native().find("clang") != std::string::npos;
  if (clang) {
    // Unlike gcc, clang allows only 256 levels of brackets unless it is told otherwise, and leaves
    // out loops that have no effect, although they may never end.
    arguments.insert(arguments.end(), {"-fbracket-depth=10000", "-fno-finite-loops"});
  } else {
    // The analysis of pointers takes gcc a time that grows with the square of a unit's string
    // statements.
    arguments.push_back("-fno-tree-pta");
  }
  const ProcessResult result = runProcess(arguments, guard, compilation.timeout);
  if (result.succeeded()) {
    if (fs::exists(program)) return;
    throw Failure(fmt::format("the C compiler '{}' made no program", compiler));
  }
  if (result.end == ProcessResult::End::TimedOut) {
    throw Failure(fmt::format("the C compiler '{}' did not end within {} s (--timeout)", compiler,
                              compilation.timeout.count()));
  }
  throw Failure(fmt::format("the C compiler '{}' failed with {}{}", compiler,
                            result.end == ProcessResult::End::Signalled
                                ? signalText(result.code)
                                : fmt::format("status {}", result.code),
                            quotedOutput(result.output)));
}

}  // namespace velc
