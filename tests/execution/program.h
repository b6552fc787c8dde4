// A Structured Text program that calls operators, with what its variables are to hold after
// it has run through plugin, reference host, C compiler and runtime.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "fuzz/programs/execution.h"
#include "fuzz/programs/operators.h"

namespace execution {

// ---- Values ----
// They, their types and what operators make of them are those of the random programs.
using generated::Type;
using generated::types;
using generated::Value;
using generated::Wide;

// The type of that name; there is one.
const Type& typeOf(const std::string& name);
Value value(const std::string& type, Wide number);  // modulo the type's width
Value text(const std::string& type, const std::string& units);

// Limits of all widths and their neighbours, rounding halves, and what is no finite number,
// as far as the type has them; some texts.
std::vector<Value> samples(const Type& type);
// The first of the samples: 0, 1, -1 and the ends; of reals NaN, infinities and halves.
std::vector<Value> few(const Type& type);

// What a variable of the type holds; of a text as much as it needs.
std::string bytes(const Value& value);
Value fromBytes(const Type& type, const std::string& bytes);

// ---- Programs ----

// The C compiler that this run of the tests proves; "-" for none.
extern std::string compiler;

// What has been run and held so far.
struct Proof {
  std::set<std::string> operators;  // in capitals
  int cases = 0;
};
Proof& proof();

// Every name that the plugin registers.
std::vector<std::string> operatorNames();

class Program {
 public:
  // Freely added to; `units` stand before the program. Calls that are expected to give a value
  // run before `body`, the first of them see `variables`.
  std::string units;
  std::string variables;
  std::string body;
  std::string refreshes;  // of local I/O that are expected, as `velc run --trace-io` has them
  refhost::Options options;
  std::map<std::string, Value> presets;  // of device addresses before the first scan
  std::vector<std::string> flags;        // for the C compiler, that texts of operators need
  int scans = 1;

  // A variable that holds the value, which the C compiler cannot know.
  std::string input(const Value& value);
  // A call with inputs, given to a variable of the type of
  // `expected`. What a NaN holds does not count.
  void expect(const std::string& name, const std::vector<Value>& inputs, const Value& expected);
  // The same for any expression.
  void expect(const std::string& expression, const Value& expected);
  // One of many cases of an operation, which is an expression with $0, $1, ... for its inputs. They
  // are plain variables, and get the values of each case in a loop, so that its C is compiled once.
  void expectCase(const std::string& operation, const std::vector<Value>& inputs,
                  const Value& expected);
  // What a variable declared in `variables`, or a device address, holds after all scans.
  void expectVariable(const std::string& name, const Value& expected);
  void expectAt(const std::string& address, const Value& expected);
  // Counts operators that statements in `units` and `body` call as proven by this program.
  void proves(const std::string& operators);

  // Runs it and compares.
  void run();

 private:
  struct Expectation {
    Value value;
    std::string source;
  };
  struct Operation {
    std::string expression;                 // with the variables that are its inputs
    std::vector<std::vector<Value>> cases;  // the inputs of each
    std::vector<Value> expected;
  };
  std::string source() const;
  std::string loops() const;
  std::vector<std::string> stores(const generated::Execution& execution) const;
  void compare(const Operation& operation, const std::string& found, std::size_t size) const;
  void compare(const generated::Execution& execution) const;

  std::map<std::string, std::string> names_;  // of inputs, by type and bytes
  std::map<std::string, Value> inputs_;       // by name
  std::vector<std::string> calls_;            // each given to the variable out<index>
  std::map<std::string, Expectation> expectations_;
  std::map<std::string, std::size_t> known_;  // operations with the types of inputs and result
  std::vector<Operation> operations_;
  std::vector<std::string> addresses_;
  std::set<std::string> operators_;
};

}  // namespace execution
