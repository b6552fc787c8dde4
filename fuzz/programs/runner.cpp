#include "fuzz/programs/runner.h"

#include <fmt/format.h>

#include <sstream>

#include "cli/paths.h"
#include "cli/program_driver.h"
#include "fuzz/programs/execution.h"
#include "fuzz/programs/machine.h"

namespace generated {
namespace {

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

std::string run(const std::vector<Units>& programs, const Toolchain& toolchain) {
  std::string source;
  for (const Units& units : programs) source += text(units);
  Execution execution;
  std::string said = execution.translate(source);
  if (!said.empty()) return said;
  // Without contraction every operation rounds, as it does here.
  Words command = {toolchain.compiler, "-w", "-ffp-contract=off", velc::libraryPath("libvelrt.a")};
  if (toolchain.sanitize) {
    command.insert(command.end(), {"-fsanitize=address,undefined", "-fno-sanitize-recover=all"});
  }
  said = execution.run(command, {}, kScans);
  if (!said.empty()) return said;

  std::string expected;
  auto variable = execution.variables.begin();
  for (const Units& units : programs) {
    const std::map<std::string, Value> held = evaluated(units);
    for (; variable != execution.variables.end() && variable->program == units.back().name;
         ++variable) {
      expected += bytes(held.at(variable->name), static_cast<std::size_t>(variable->byteSize));
    }
  }
  const auto lines = [&](const std::string& values) {
    return velc::valueLines(execution.session, execution.variables, values);
  };
  return differences(lines(execution.values), lines(expected));
}

}  // namespace generated
