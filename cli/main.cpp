// velc: checks, translates and runs Structured Text with the reference host.
#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <new>

#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/termination_guard.h"

namespace velc {

namespace {

int execute(int argc, char** argv) {
  CommandLine line;
  addOperatorsCommand(line);
  addCheckCommand(line);
  addTranslateCommand(line);
  addFormatCommand(line);
  addRunCommand(line);
  addBuildCommand(line);
  addTestCommand(line);
  addMemoryCommand(line);
  addLspCommand(line);
  addExplainCommand(line);
  addHelpCommand(line);
  return line.execute(argc, argv);
}

// Opens closed standard streams, so that no file that is opened later gets their descriptors.
// Writing to such a stream remains an error.
void occupyStandardStreams() {
  int descriptor = 0;
  while (descriptor >= 0 && descriptor <= STDERR_FILENO) {
    descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC);
  }
  if (descriptor >= 0) close(descriptor);
}

}  // namespace

}  // namespace velc

int main(int argc, char** argv) {
  velc::occupyStandardStreams();
  // A closed pipe and the limit of the file size are to be errors of write(), not signals.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    return velc::execute(argc, argv);
  } catch (const velc::Terminated&) {
    return velc::kFailure;
  } catch (const std::bad_alloc&) {
    std::fputs("velc: out of memory\n", stderr);
    return velc::kFailure;
  } catch (const std::exception& error) {
    // fputs, because it does not throw when standard error cannot be written to either.
    std::fputs(fmt::format("velc: {}\n", error.what()).c_str(), stderr);
    return velc::kFailure;
  }
}
