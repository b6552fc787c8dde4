#include <fmt/format.h>

#include <filesystem>

#include "cli/commands.h"
#include "cli/compilation.h"
#include "cli/failure.h"
#include "cli/output_file.h"
#include "cli/program_driver.h"
#include "cli/run_options.h"
#include "cli/temporary_folder.h"
#include "cli/translation.h"

namespace velc {

namespace {

namespace fs = std::filesystem;

struct BuildOptions {
  std::vector<std::string> files;
  std::string output;
  bool debug = false;
  std::string compiler = "cc";
  std::chrono::seconds timeout{60};
};

// The folder of the generated C as debuggers show it. It is deleted once the C is compiled.
constexpr const char* kShownFolder = "/velc";

int build(const CommonOptions& common, const BuildOptions& options) {
  if (options.output == "-") throw Failure("a program goes to a file, not to standard output");
  refuseClashes(options.files, {options.output});
  const auto session = startSession(common);
  if (!analyse(*session, common, options.files)) return kProgramErrors;
  if (session->programs().empty()) throw Failure("there is no PROGRAM to build");
  const TerminationGuard guard;
  const TemporaryFolder folder;
  const auto text =
      translateToC(*session, common, {options.debug, folder.path() / "program.c", {}});
  if (!text) return kProgramErrors;
  writeFile(folder.path() / "program.c", *text);
  writeFile(folder.path() / "driver.c", driverText(*session, {}, {}, false) +
                                            "\nint main(int argc, char** argv) { return "
                                            "vel_build_main(argc, argv); }\n");
  Compilation compilation{options.compiler, {"-O2"}, options.timeout};
  if (options.debug) {
    compilation.flags = {
        "-O0", "-g", fmt::format("-fdebug-prefix-map={}={}", folder.path().native(), kShownFolder)};
  }
  compileProgram(folder.path() / "driver.c", folder.path() / "program", compilation, guard);
  writeProgram(options.output, folder.read("program"));
  return kSuccess;
}

}  // namespace

void addBuildCommand(CommandLine& line) {
  Command command =
      line.addCommand("build", "Translate and compile programs into one that runs their scans");
  const auto options = std::make_shared<BuildOptions>();
  line.addSources(command, options->files);
  command.option("-o,--output", options->output, "Where the program goes")
      .value("PROGRAM")
      .required();
  command.flag("-g,--debug", options->debug,
               "With the lines of the Structured Text and the variables, for debuggers");
  addCompilerOptions(command, options->compiler, options->timeout,
                     "Seconds that compiling may take (default: 60)");
  line.setAction(command, options, build);
}

}  // namespace velc
