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

namespace {

// Variables of the operation at `index`: an input, an array of the values of all cases, ...
std::string nameAt(const char* role, std::size_t index, std::size_t input = 0) {
  return fmt::format("{}{}_{}", role, index, input);
}

}  // namespace

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

void Program::expectCase(const std::string& operation, const std::vector<Value>& inputs,
                         const Value& expected) {
  std::string key = fmt::format("{} {}", operation, expected.type->name);
  for (const Value& input : inputs) key += fmt::format(" {}", input.type->name);
  const auto [at, isNew] = known_.emplace(key, operations_.size());
  if (isNew) {
    std::string expression = operation;
    for (std::size_t i = inputs.size(); i-- > 0;) {
      const std::string placeholder = fmt::format("${}", i);
      for (std::size_t found; (found = expression.find(placeholder)) != std::string::npos;) {
        expression.replace(found, placeholder.size(), nameAt("a", at->second, i));
      }
    }
    operations_.push_back({std::move(expression), {}, {}});
    if (operation.find('(') != std::string::npos) {
      operators_.insert(operation.substr(0, operation.find('(')));
    }
  }
  operations_[at->second].cases.push_back(inputs);
  operations_[at->second].expected.push_back(expected);
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
  return text + loops();
}

std::string Program::loops() const {
  std::string text;
  for (std::size_t i = 0; i < operations_.size(); ++i) {
    const Operation& operation = operations_[i];
    const std::size_t count = operation.cases.size();
    const auto declared = [&](const char* single, const char* array, const Type& type,
                              std::size_t input) {
      return fmt::format("{0} : {1}; {2} : ARRAY[1..{3}] OF {1};\n", nameAt(single, i, input),
                         type.name, nameAt(array, i, input), count);
    };
    text += fmt::format("PROGRAM Loop{} VAR i : DINT;\n", i);
    std::string gets;
    for (std::size_t input = 0; input < operation.cases[0].size(); ++input) {
      text += declared("a", "in", *operation.cases[0][input].type, input);
      gets += fmt::format("{} := {}[i]; ", nameAt("a", i, input), nameAt("in", i, input));
    }
    text += declared("r", "out", *operation.expected[0].type, 0);
    text += fmt::format(
        "END_VAR\nFOR i := 1 TO {} DO\n{}\n{} := {};\n{} := {};\nEND_FOR\nEND_PROGRAM\n", count,
        gets, nameAt("r", i), operation.expression, nameAt("out", i) + "[i]", nameAt("r", i));
  }
  return text;
}

Words Program::stores(const Execution& execution) const {
  std::map<std::string, std::pair<const Operation*, std::size_t>> arrays;
  for (std::size_t i = 0; i < operations_.size(); ++i) {
    for (std::size_t input = 0; input < operations_[i].cases[0].size(); ++input) {
      arrays[nameAt("in", i, input)] = {&operations_[i], input};
    }
  }
  Words result;
  for (const refhost::ProgramVariable& variable : execution.variables) {
    if (const auto input = inputs_.find(variable.name); input != inputs_.end()) {
      result.push_back(storeStatement(variable, bytes(input->second)));
    } else if (const auto array = arrays.find(variable.name); array != arrays.end()) {
      const auto size = static_cast<std::size_t>(variable.shape->element->byteSize);
      std::string all;
      for (const std::vector<Value>& values : array->second.first->cases) {
        all += generated::bytes(values[array->second.second], size);
      }
      result.push_back(storeStatement(variable, all));
    }
  }
  return result;
}

// Compares the values at the head of `found`, which each have `size` bytes.
void Program::compare(const Operation& operation, const std::string& found,
                      std::size_t size) const {
  for (std::size_t i = 0; i < operation.expected.size(); ++i) {
    const Value& expected = operation.expected[i];
    const Value value = fromBytes(*expected.type, found.substr(i * size, size));
    std::string inputs;
    for (const Value& input : operation.cases[i]) inputs += ' ' + generated::printed(input);
    EXPECT_EQ(generated::printed(expected), generated::printed(value))
        << operation.expression << " of" << inputs;
  }
}

void Program::compare(const Execution& execution) const {
  std::map<std::string, const Operation*> results;
  for (std::size_t i = 0; i < operations_.size(); ++i) results[nameAt("out", i)] = &operations_[i];
  std::size_t at = 0;
  std::size_t compared = 0;
  for (const refhost::ProgramVariable& variable : execution.variables) {
    auto size = static_cast<std::size_t>(variable.byteSize);
    const auto found = expectations_.find(variable.name);
    if (found != expectations_.end()) {
      const auto& [value, source] = found->second;
      EXPECT_EQ(generated::printed(value),
                generated::printed(fromBytes(*value.type, execution.values.substr(at, size))))
          << source;
      ++compared;
    }
    if (variable.shape->element != nullptr) {
      const auto element = static_cast<std::size_t>(variable.shape->element->byteSize);
      size = static_cast<std::size_t>(variable.shape->count) * element;
      if (const auto result = results.find(variable.name); result != results.end()) {
        compare(*result->second, execution.values.substr(at, size), element);
        ++compared;
      }
    }
    at += size;
  }
  EXPECT_EQ(execution.values.size(), at);
  EXPECT_EQ(expectations_.size() + operations_.size(), compared);
}

void Program::run() {
  Execution execution(options);
  ASSERT_EQ("", execution.translate(source(), addresses_));
  if (compiler == "-") {
    proof().operators.insert(operators_.begin(), operators_.end());
    return;
  }
  Words statements = stores(execution);
  for (const auto& [address, value] : presets) {
    refhost::ProgramVariable place;
    ASSERT_TRUE(execution.session.addressVariable(address, place)) << address;
    statements.push_back(storeStatement(place, bytes(value)));
  }
  Words more = flags;
  more.insert(more.end(), runtimeObjects().begin(), runtimeObjects().end());
  ASSERT_EQ("", execution.run(compileCommand(more), statements, scans));
  EXPECT_EQ(refreshes, execution.trace);
  compare(execution);
  if (testing::Test::HasFailure()) return;
  proof().operators.insert(operators_.begin(), operators_.end());
  proof().cases += static_cast<int>(expectations_.size());
  for (const Operation& operation : operations_) {
    proof().cases += static_cast<int>(operation.expected.size());
  }
}

}  // namespace execution
