#include "tests/execution/program.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>

#include "cli/diagnostics_printer.h"
#include "cli/paths.h"
#include "cli/process.h"
#include "cli/program_driver.h"
#include "cli/temporary_folder.h"
#include "core/op_manager_api.h"

namespace execution {

std::string compiler;

Proof& proof() {
  static Proof all;
  return all;
}

std::vector<std::string> operatorNames() {
  refhost::Options options;
  options.pluginPath = velc::pluginPath();
  refhost::Session session(options);
  std::string error;
  EXPECT_TRUE(session.start(error)) << error;
  std::vector<std::string> names;
  session.operators().operatorNames(names);
  return names;
}

std::string Program::input(const Value& value) {
  std::string& name = names_[std::string(value.type->name) + bytes(value)];
  if (name.empty()) {
    name = fmt::format("in{}", names_.size());
    inputs_[name] = value;
  }
  return name;
}

void Program::expect(const std::string& expression, const Value& expected) {
  expectations_[fmt::format("out{}", calls_.size())] = {expected, expression};
  calls_.push_back(expression);
  operators_.insert(expression.substr(0, expression.find('(')));
}

void Program::expect(const std::string& name, const std::vector<Value>& inputs,
                     const Value& expected) {
  std::string call;
  for (const Value& value : inputs) call += (call.empty() ? name + '(' : ", ") + input(value);
  expect(call + ')', expected);
}

void Program::expectVariable(const std::string& name, const Value& expected) {
  expectations_[name] = {expected, name};
}

void Program::expectAt(const std::string& address, const Value& expected) {
  addresses_.push_back(address);
  expectVariable(address, expected);
}

void Program::proves(const std::string& operators) {
  std::istringstream names(operators);
  operators_.insert(std::istream_iterator<std::string>(names), {});
}

void Program::compileWith(const char* flag, const char* reason) {
  ASSERT_STRNE("", reason);
  flags_.emplace_back(flag);
}

namespace {

std::string readFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const std::string& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

// C that makes `variable` hold the bytes.
std::string storeStatement(const refhost::ProgramVariable& variable, const std::string& bytes) {
  std::string text;
  for (const char byte : bytes) text += fmt::format("\\{:03o}", static_cast<unsigned char>(byte));
  return fmt::format("__builtin_memcpy((void*)&({}), \"{}\", {});", variable.reference, text,
                     bytes.size());
}

using Arguments = std::vector<std::string>;

// What a command says when it fails.
std::string failure(const Arguments& command) {
  const velc::TerminationGuard guard;
  const velc::ProcessResult result = velc::runProcess(command, guard, std::chrono::minutes(2));
  return result.succeeded() ? "" : fmt::format("{} failed:\n{}", command[0], result.output);
}

Arguments compileCommand(const Arguments& more) {
  std::istringstream flags(
      "-std=gnu11 -O1 -Wall -Wextra -Werror -fno-sanitize-recover=all "
      "-fsanitize=address,undefined,float-cast-overflow");
  Arguments command = {compiler, "-I" + velc::includeFolder().native()};
  command.insert(command.end(), std::istream_iterator<std::string>(flags), {});
  command.insert(command.end(), more.begin(), more.end());
  return command;
}

// The runtime, compiled with the sanitizers too, once for all programs.
class Runtime {
 public:
  Runtime() {
    for (const auto& file : std::filesystem::directory_iterator(RUNTIME)) {
      if (file.path().extension() != ".c") continue;
      objects_.push_back(folder_.path() / file.path().stem().concat(".o"));
      EXPECT_EQ("", failure(compileCommand({"-c", "-o", objects_.back(), file.path()})));
    }
  }
  static const Arguments& objects() {
    static const Runtime runtime;
    return runtime.objects_;
  }

 private:
  velc::TemporaryFolder folder_;
  Arguments objects_;
};

}  // namespace

// C compilers take long for long functions, so the calls are spread over several programs,
// each of which declares the inputs that it uses.
std::string Program::source() const {
  constexpr std::size_t kCallsOfUnit = 100;
  static const std::regex inputName("\\bin[0-9]+");
  std::string text = units;
  for (std::size_t first = 0; first == 0 || first < calls_.size(); first += kCallsOfUnit) {
    std::string declared = first == 0 ? variables : "";
    std::string statements;
    for (std::size_t i = first; i < std::min(first + kCallsOfUnit, calls_.size()); ++i) {
      const std::string name = fmt::format("out{}", i);
      declared += fmt::format("{} : {};\n", name, expectations_.at(name).value.type->name);
      statements += fmt::format("{} := {};\n", name, calls_[i]);
    }
    if (first == 0) statements += body;
    std::set<std::string> used;
    for (std::sregex_token_iterator at(statements.begin(), statements.end(), inputName), end;
         at != end; ++at) {
      if (used.insert(*at).second) {
        declared += fmt::format("{} : {};\n", at->str(), inputs_.at(*at).type->name);
      }
    }
    text +=
        fmt::format("PROGRAM Unit{} VAR\n{}END_VAR\n{}END_PROGRAM\n", first, declared, statements);
  }
  return text;
}

void Program::compare(const std::vector<refhost::ProgramVariable>& printed,
                      const std::string& held) const {
  std::size_t at = 0;
  std::size_t compared = 0;
  for (const refhost::ProgramVariable& variable : printed) {
    const auto size = static_cast<std::size_t>(variable.byteSize);
    const std::string bytes = held.substr(at, size);
    at += size;
    const auto found = expectations_.find(variable.name);
    if (found == expectations_.end()) continue;
    const Expectation& expected = found->second;
    EXPECT_EQ(generated::printed(expected.value),
              generated::printed(fromBytes(*expected.value.type, bytes)))
        << expected.source;
    ++compared;
  }
  EXPECT_EQ(held.size(), at);
  EXPECT_EQ(expectations_.size(), compared);
}

void Program::run() {
  options.pluginPath = velc::pluginPath();
  refhost::Session session(options);
  std::string error;
  ASSERT_TRUE(session.start(error)) << error;
  session.sources().add("program.st", source());
  session.analyse();
  const std::string text = session.translate();
  for (const vel::VELMessage& message : session.messages()) {
    ASSERT_NE(1, message.severity) << velc::diagnosticText(session.sources(), message);
  }

  if (compiler == "-") {
    proof().operators.insert(operators_.begin(), operators_.end());
    return;
  }

  const std::vector<refhost::ProgramVariable> printed = velc::printedVariables(session, addresses_);
  std::vector<std::string> stores;
  for (const refhost::ProgramVariable& variable : printed) {
    const auto input = inputs_.find(variable.name);
    if (input != inputs_.end()) stores.push_back(storeStatement(variable, bytes(input->second)));
  }
  for (const auto& [address, value] : presets) {
    refhost::ProgramVariable place;
    ASSERT_TRUE(session.addressVariable(address, place)) << address;
    stores.push_back(storeStatement(place, bytes(value)));
  }

  const velc::TemporaryFolder temporary;
  const std::string folder = temporary.path().native() + '/';
  writeFile(folder + "program.c", text);
  writeFile(folder + "driver.c", velc::driverText(session, stores, printed, true));
  Arguments arguments = {"-o", folder + "program", folder + "driver.c"};
  arguments.insert(arguments.end(), flags_.begin(), flags_.end());
  arguments.insert(arguments.end(), Runtime::objects().begin(), Runtime::objects().end());
  arguments.insert(arguments.end(), {velc::libraryPath("libvelrun.a"), "-lm"});
  ASSERT_EQ("", failure(compileCommand(arguments)));
  ASSERT_EQ("", failure({folder + "program", folder + "values", folder + "trace",
                         std::to_string(scans), "0"}));
  EXPECT_EQ(refreshes, readFile(folder + "trace"));
  compare(printed, readFile(folder + "values"));
  if (testing::Test::HasFailure()) return;
  proof().operators.insert(operators_.begin(), operators_.end());
  proof().cases += static_cast<int>(expectations_.size());
}

}  // namespace execution
