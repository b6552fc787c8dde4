// The operators of the table of random programs, with the limits of all types.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <set>

#include "tests/execution/program.h"

namespace execution {
namespace {

using generated::Operator;
using generated::Types;
using generated::Values;

// The types of operands that can give the result: all where there is one operand, else some.
std::set<Types> signatures(const Operator& op, const Type& result) {
  constexpr int kDraws = 1000;
  const std::size_t kOfSeveral = op.precedence > 0 ? 4 : 8;
  generated::Random random(1);
  std::set<Types> found;
  for (int i = 0; i < kDraws; ++i) {
    Types operands = op.operands(random, result);
    if (operands.empty() || (operands.size() > 1 && found.size() == kOfSeveral)) break;
    found.insert(std::move(operands));
  }
  return found;
}

std::vector<Value> triedFor(const Operator& op, const Types& operands, const Type& result) {
  const Type& type = *operands[0];
  // The generic names become the same C, mostly.
  const bool generic = op.name.compare(0, 3, "TO_") == 0;
  std::vector<Value> tried = operands.size() == 1 && !generic ? samples(type) : few(type);
  for (int i = 0; i < 256 && op.name.find("BCD") != std::string::npos; ++i) {
    tried.push_back(generated::integer(type, i));
  }
  if (!type.text() || result.text()) return tried;
  // Ten times the limit takes the nearest value. Other forms are read in tests/runtime.
  for (const Value& sample : samples(result)) {
    tried.push_back(text(type.name, generated::printed(sample)));
    if (result.integer()) tried.push_back(text(type.name, tried.back().text + '0'));
  }
  return tried;
}

// Each of the first operand's values with a few of the second's and third's; of more operands
// each has one value.
std::vector<Values> combinations(const Operator& op, const Types& operands, const Type& result) {
  std::vector<Values> all;
  for (const Value& first : triedFor(op, operands, result)) all.push_back({first});
  for (std::size_t i = 1; i < operands.size(); ++i) {
    std::vector<Value> next = few(*operands[i]);
    for (const int count : {5, 7, 15, 31, 63}) {
      if (op.need == Operator::Shift) next.push_back(generated::integer(*operands[i], count));
    }
    std::vector<Values> longer;
    for (const Values& values : all) {
      for (const Value& value : operands.size() > 3 ? std::vector{next[i % next.size()]} : next) {
        longer.push_back(values);
        longer.back().push_back(value);
      }
    }
    all = std::move(longer);
  }
  return all;
}

// With $0, $1, ... for its operands.
std::string operationOf(const Operator& op, const std::string& name, std::size_t operands) {
  if (op.precedence > 0)
    return (operands == 1 ? "" : "$0 ") + name + (operands == 1 ? " $0" : " $1");
  std::string call;
  for (std::size_t i = 0; i < operands; ++i) {
    call += (i == 0 ? name + '(' : ", ") + fmt::format("${}", i);
  }
  return call + ')';
}

TEST(Operators, ComputeWhatTheirTableSays) {
  const std::vector<std::string> names = operatorNames();
  const std::set<std::string> registered(names.begin(), names.end());
  Program program;
  int operations = 0;
  const auto run = [&] {
    // MIN and MAX compare what they are given.
    program.flags = {"-Wno-sign-compare"};
    program.run();
    program = Program();
    operations = 0;
  };
  for (const Operator& op : generated::operators()) {
    for (const Type& result : types()) {
      for (const Types& operands : signatures(op, result)) {
        const std::string name = nameOf(op, *operands[0], result);
        if (op.precedence == 0 && registered.count(name) == 0) continue;
        const bool reads = operands[0]->text() && !result.text() && result.kind != Type::Bool;
        const std::string operation = operationOf(op, name, operands.size());
        for (const Values& values : combinations(op, operands, result)) {
          try {
            const Value expected = op.evaluate(result, values);
            program.expectCase(operation, values, expected);
            if (reads) {
              program.expectCase("TO_" + std::string(result.name) + "($0)", values, expected);
            }
          } catch (const generated::Undefined&) {
            continue;
          }
        }
        if (++operations > 500) run();
      }
    }
  }
  run();
}

TEST(Operators, SizesAndAddresses) {
  Program program;
  program.variables = "s : STRING[10]; w : WSTRING[10]; m1 AT %MW3 : WORD; m2 AT %MD5 : DWORD;\n";
  for (const Type& type : types()) {
    if (!type.text())
      program.expect(fmt::format("SIZEOF({})", type.name), value("UDINT", (type.bits + 7) / 8));
  }
  const std::pair<const char*, int> rows[] = {
      {"s", 11},   {"w", 22},     {"%MX7.3", 1}, {"%IB1", 1},      {"%QW1", 2}, {"%MD1", 4},
      {"%ML1", 8}, {"LINT#5", 8}, {"BYTE#5", 1}, {"LREAL#1.0", 8}, {"T#5s", 4}, {"5", 4}};
  for (const auto& [operand, size] : rows) {
    program.expect(fmt::format("SIZEOF({})", operand), value("UDINT", size));
  }
  // Only differences of addresses are the same on every machine.
  program.expect("ADR(m2) - ADR(m1)", value("UDINT", 14));
  program.expect("ADR(%MB9) - ADR(%MB2)", value("UDINT", 7));
  program.run();
}

}  // namespace
}  // namespace execution
