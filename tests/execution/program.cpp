#include "tests/execution/program.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <regex>
#include <sstream>

#include "cli/paths.h"
#include "cli/temporary_folder.h"
#include "core/op_manager_api.h"

namespace execution {

using generated::Execution;
using generated::Words;

std::string compiler;

Proof& proof() {
  static Proof all;
  return all;
}

std::vector<std::string> operatorNames() {
  std::vector<std::string> names;
  Execution().session.operators().operatorNames(names);
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
  const std::size_t open = expression.find('(');
  if (open != std::string::npos) operators_.insert(expression.substr(0, open));
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

namespace {

// C that makes `variable` hold the bytes.
std::string storeStatement(const refhost::ProgramVariable& variable, const std::string& bytes) {
  std::string text;
  for (const char byte : bytes) text += fmt::format("\\{:03o}", static_cast<unsigned char>(byte));
  return fmt::format("__builtin_memcpy((void*)&({}), \"{}\", {});", variable.reference, text,
                     bytes.size());
}

Words compileCommand(const Words& more) {
  std::istringstream flags(
      "-Wall -Wextra -Werror -fno-sanitize-recover=all "
      "-fsanitize=address,undefined,float-cast-overflow");
  Words command = {compiler, "-O1", "-I" + velc::includeFolder().native()};
  command.insert(command.end(), std::istream_iterator<std::string>(flags), {});
  command.insert(command.end(), more.begin(), more.end());
  return command;
}

// The runtime, compiled with the sanitizers too, once for all programs.
const Words& runtimeObjects() {
  static const velc::TemporaryFolder folder;
  static Words objects;
  if (!objects.empty()) return objects;
  for (const auto& file : std::filesystem::directory_iterator(RUNTIME)) {
    if (file.path().extension() != ".c") continue;
    objects.push_back(folder.path() / file.path().stem().concat(".o"));
    EXPECT_EQ("", generated::failure(
                      compileCommand({"-std=gnu11", "-c", "-o", objects.back(), file.path()})));
  }
  return objects;
}

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

void Program::compare(const Execution& execution) const {
  std::size_t at = 0;
  std::size_t compared = 0;
  for (const refhost::ProgramVariable& variable : execution.variables) {
    const auto size = static_cast<std::size_t>(variable.byteSize);
    const auto found = expectations_.find(variable.name);
    if (found != expectations_.end()) {
      const auto& [value, source] = found->second;
      EXPECT_EQ(generated::printed(value),
                generated::printed(fromBytes(*value.type, execution.values.substr(at, size))))
          << source;
      ++compared;
    }
    at += size;
  }
  EXPECT_EQ(execution.values.size(), at);
  EXPECT_EQ(expectations_.size(), compared);
}

void Program::run() {
  Execution execution(options);
  ASSERT_EQ("", execution.translate(source(), addresses_));
  if (compiler == "-") {
    proof().operators.insert(operators_.begin(), operators_.end());
    return;
  }
  Words stores;
  for (const refhost::ProgramVariable& variable : execution.variables) {
    const auto input = inputs_.find(variable.name);
    if (input != inputs_.end()) stores.push_back(storeStatement(variable, bytes(input->second)));
  }
  for (const auto& [address, value] : presets) {
    refhost::ProgramVariable place;
    ASSERT_TRUE(execution.session.addressVariable(address, place)) << address;
    stores.push_back(storeStatement(place, bytes(value)));
  }
  Words more = flags;
  more.insert(more.end(), runtimeObjects().begin(), runtimeObjects().end());
  ASSERT_EQ("", execution.run(compileCommand(more), stores, scans));
  EXPECT_EQ(refreshes, execution.trace);
  compare(execution);
  if (testing::Test::HasFailure()) return;
  proof().operators.insert(operators_.begin(), operators_.end());
  proof().cases += static_cast<int>(expectations_.size());
}

}  // namespace execution
