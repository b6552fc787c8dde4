// random_programs: runs random programs and compares what they give with what they should.
#include <fmt/format.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fstream>
#include <sstream>

#include "cli/paths.h"
#include "cli/printed_values.h"
#include "cli/program_driver.h"
#include "cli/termination_guard.h"
#include "fuzz/programs/execution.h"
#include "fuzz/programs/programs.h"
#include "refhost/format/format.h"

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

void append(std::string& to, const refhost::ValueShape& shape, const std::string& path,
            const std::map<std::string, Value>& held) {
  for (const refhost::ValueShape::Member& member : shape.members) {
    append(to, *member.shape, path + '.' + member.name, held);
  }
  for (const std::string& at : subscripts(shape.bounds)) {
    append(to, *shape.element, path + at, held);
  }
  if (!shape.hasParts()) to += bytes(held.at(path), static_cast<std::size_t>(shape.byteSize));
}

// What is wrong with the formatted text of a program whose C is known; empty for nothing.
std::string layoutFault(const std::string& source, const std::string& c) {
  const std::string formatted = refhost::withEdits(source, refhost::formattingEdits(source));
  if (!refhost::formattingEdits(formatted).empty()) return "formatting it again changes it";
  Execution execution;
  const std::string said = execution.translate(formatted);
  if (!said.empty()) return "formatted, it has errors: " + said;
  return execution.c() == c ? "" : "formatted, it has other C";
}

// What is wrong with the programs, run as one; an empty text for nothing. Their names differ.
std::string run(const Units* begin, const Units* end, const Words& compiler) {
  std::string source;
  Words globals;
  for (const Units* units = begin; units != end; ++units) {
    source += text(*units);
    for (const Variable& each : units->list.front().variables) globals.push_back(each.name);
  }
  Execution execution;
  std::string said = execution.translate(source, globals);
  if (said.empty()) said = layoutFault(source, execution.c());
  if (said.empty()) said = execution.run(compiler, {}, kScans);
  if (!said.empty()) return said;

  std::map<std::string, Value> held;
  for (const Units* units = begin; units != end; ++units) {
    for (auto& [path, value] : evaluated(*units)) {
      const bool global = path[0] == 'g';
      held[(global ? "" : units->list.back().name) + '.' + path] = std::move(value);
    }
  }
  std::string expected;
  for (const refhost::ProgramVariable& variable : execution.variables) {
    append(expected, *variable.shape, variable.program + '.' + variable.name, held);
  }
  const velc::Places places(execution.session);
  const auto lines = [&](const std::string& values) {
    return velc::printedValues(velc::ValuesForm::Text, places, execution.variables, values);
  };
  return differences(lines(execution.values), lines(expected));
}

constexpr std::uint64_t kBatch = 50;  // programs in one source file

int execute(int argc, char** argv) {
  std::uint64_t count = 100;
  std::uint64_t seed = 1;
  std::string compiler = "cc";
  std::string summary;
  bool sanitize = false;
  bool print = false;
  CLI::App app("Runs random programs and compares what they give with what they should.");
  app.add_option("--count", count, "how many")->capture_default_str();
  app.add_option("--seed", seed, "of the first; the others follow")->capture_default_str();
  app.add_option("--compiler", compiler, "the C compiler")->capture_default_str();
  app.add_option("--summary", summary, "a file for the closing line");
  app.add_flag("--sanitize", sanitize, "with address and undefined-behaviour sanitizers");
  app.add_flag("--print", print, "print the programs only");
  CLI11_PARSE(app, argc, argv);

  Words command = {compiler, "-Wall", "-Wextra", "-Werror", velc::libraryPath("libvelrt.a")};
  // Compilers compute operators of constants and then know results of comparisons. Without
  // contraction every operation rounds, as it does here.
  command.insert(command.end(),
                 {"-Wno-tautological-compare", "-Wno-sign-compare", "-ffp-contract=off"});
  // Of the programs, not of the runtime.
  if (sanitize) {
    command.insert(command.end(), {"-fsanitize=address,undefined", "-fno-sanitize-recover=all"});
  }
  std::uint64_t failed = 0;
  for (std::uint64_t done = 0; done < count;) {
    std::vector<Units> programs;
    const std::uint64_t size = std::min(kBatch, count - done);
    for (std::uint64_t i = 0; i < size; ++i) {
      programs.push_back(generate(seed + done + i, fmt::format("_{}", seed + done + i)));
      if (print) fmt::print("{}\n", text(programs.back()));
    }
    const Units* const first = programs.data();
    if (!print && !run(first, first + size, command).empty()) {
      for (std::uint64_t i = 0; i < size; ++i) {
        const std::string wrong = run(first + i, first + i + 1, command);
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
  const std::string line =
      fmt::format("{} random programs, seed {}, {}: {} failed\n", count, seed, compiler, failed);
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
