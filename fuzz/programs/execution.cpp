#include "fuzz/programs/execution.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

#include "cli/diagnostics_printer.h"
#include "cli/output_file.h"
#include "cli/paths.h"
#include "cli/process.h"
#include "cli/program_driver.h"
#include "cli/temporary_folder.h"

namespace generated {
namespace {

std::string readFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

refhost::Options withPlugin(refhost::Options options) {
  options.pluginPath = velc::pluginPath();
  return options;
}

}  // namespace

std::string failure(const Words& command) {
  const velc::TerminationGuard guard;
  const velc::ProcessResult result = velc::runProcess(command, guard, std::chrono::minutes(2));
  return result.succeeded() ? "" : command[0] + " failed:\n" + result.output;
}

Execution::Execution(refhost::Options options) : session(withPlugin(std::move(options))) {
  std::string error;
  if (!session.start(error)) throw std::runtime_error(error);
}

std::string Execution::translate(const std::string& source, const Words& places) {
  session.sources().add("program.st", source);
  if (session.analyse()) c_ = session.translate();
  for (const refhost::Diagnostic& message : session.messages()) {
    if (message.severity == refhost::Severity::Error)
      return velc::diagnosticText(session.sources(), message);
  }
  for (refhost::ProgramVariable& each : velc::printedVariables(session, places)) {
    if (each.type != vel::BasicDataType::Pointer) variables.push_back(std::move(each));
  }
  return "";
}

std::string Execution::run(const Words& compiler, const Words& stores, int scans) {
  const velc::TemporaryFolder temporary;
  const std::string folder = temporary.path().native() + '/';
  velc::writeFile(folder + "program.c", c_);
  velc::writeFile(folder + "driver.c", velc::driverText(session, stores, variables, true));
  Words command = compiler;
  command.insert(command.begin() + 1,
                 {"-std=gnu11", "-O1", "-I" + velc::includeFolder().native(), "-o",
                  folder + "program", folder + "driver.c", velc::libraryPath("libvelrun.a")});
  command.emplace_back("-lm");
  std::string said = failure(command);
  if (said.empty()) {
    said = failure(
        {folder + "program", folder + "values", folder + "trace", std::to_string(scans), "10"});
  }
  values = readFile(folder + "values");
  trace = readFile(folder + "trace");
  return said;
}

}  // namespace generated
