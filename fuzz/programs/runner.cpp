#include "fuzz/programs/runner.h"

#include <fmt/format.h>

#include <fstream>
#include <iterator>
#include <sstream>

#include "cli/diagnostics_printer.h"
#include "cli/output_file.h"
#include "cli/paths.h"
#include "cli/process.h"
#include "cli/program_driver.h"
#include "cli/temporary_folder.h"
#include "fuzz/programs/machine.h"

namespace generated {
namespace {

std::vector<std::string> compileCommand(const std::string& folder, const Toolchain& toolchain) {
  // Without contraction every operation rounds, as it does here.
  std::vector<std::string> command = {toolchain.compiler,
                                      "-std=gnu11",
                                      "-O1",
                                      "-w",
                                      "-ffp-contract=off",
                                      "-I" + velc::includeFolder().native(),
                                      "-o",
                                      folder + "program",
                                      folder + "driver.c"};
  if (toolchain.sanitize) {
    command.insert(command.end(), {"-fsanitize=address,undefined", "-fno-sanitize-recover=all"});
  }
  command.insert(command.end(),
                 {velc::libraryPath("libvelrun.a"), velc::libraryPath("libvelrt.a"), "-lm"});
  return command;
}

// The lines that differ, each as it is and as it should be.
std::string differences(const std::string& actual, const std::string& expected) {
  std::istringstream have(actual);
  std::istringstream want(expected);
  std::string result;
  for (std::string is, should; std::getline(want, should);) {
    if (!std::getline(have, is)) is = "nothing";
    if (is != should)
      result += fmt::format("{}, expected {}\n", is, should.substr(should.find('=') + 2));
  }
  return result;
}

}  // namespace

Outcome run(const std::vector<Units>& programs, const Toolchain& toolchain) {
  refhost::Options options;
  options.pluginPath = velc::pluginPath();
  refhost::Session session(options);
  std::string said;
  if (!session.start(said)) return {Outcome::Refused, said};
  std::string source;
  for (const Units& units : programs) source += text(units);
  session.sources().add("random.st", source);
  const std::string c = session.analyse() ? session.translate() : "";
  for (const vel::VELMessage& message : session.messages()) {
    if (message.severity != 1) continue;
    return {Outcome::Refused, velc::diagnosticText(session.sources(), message)};
  }

  const velc::TemporaryFolder temporary;
  const velc::TerminationGuard guard;
  const std::string folder = temporary.path().native() + '/';
  const auto variables = velc::printedVariables(session, {});
  velc::writeFile(folder + "program.c", c);
  velc::writeFile(folder + "driver.c", velc::driverText(session, {}, variables, false));
  velc::ProcessResult result = velc::runProcess(compileCommand(folder, toolchain), guard);
  if (!result.succeeded()) return {Outcome::NotCompiled, "the compiler fails\n" + result.output};
  result = velc::runProcess(
      {folder + "program", folder + "values", folder + "trace", std::to_string(kScans), "10"},
      guard, std::chrono::minutes(1));
  if (!result.succeeded()) return {Outcome::Crashed, "the program fails\n" + result.output};

  std::string expected;
  std::size_t next = 0;
  for (const Units& units : programs) {
    Machine machine(units);
    machine.run(kScans);
    for (; next < variables.size() && variables[next].program == units.back().name; ++next) {
      expected += bytes(machine.value(variables[next].name),
                        static_cast<std::size_t>(variables[next].byteSize));
    }
  }
  std::ifstream file(folder + "values", std::ios::binary);
  const std::string actual(std::istreambuf_iterator<char>(file), {});
  const std::string wrong = differences(velc::valueLines(session, variables, actual),
                                        velc::valueLines(session, variables, expected));
  return {wrong.empty() ? Outcome::Right : Outcome::Wrong, wrong};
}

}  // namespace generated
