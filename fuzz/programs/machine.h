// Runs a random program on its syntax tree.
#pragma once

#include <map>

#include "fuzz/programs/tree.h"

namespace generated {

constexpr int kScans = 3;

class Machine {
 public:
  explicit Machine(const Units& units) : units_(units) {}

  // Throws Undefined at a statement that C does not define, or that does not end.
  void run(int scans);
  // The statement reached.
  const Statement* current() const { return current_; }
  // What a variable of the PROGRAM holds.
  const Value& value(const std::string& name) const { return slots_.at(name).value; }

 private:
  enum class Flow { Next, Exit, Continue, Return };
  struct Slot {
    Value value;
    int length;
  };

  void enter(const Unit& unit, const std::string& prefix);
  void assign(const std::string& name, const Value& value);
  Value evaluate(const Expr& expr, const std::string& prefix);
  bool holds(const Expr& condition, const std::string& prefix);
  void tick(const Statement& statement);
  Flow execute(const Statements& statements, const std::string& prefix);
  Flow execute(const Statement& statement, const std::string& prefix);
  Flow executeFor(const Statement& statement, const std::string& prefix);
  void executeBlock(const Statement& statement, const std::string& prefix);

  const Units& units_;
  std::map<std::string, Slot> slots_;  // `prefix` and name
  const Statement* current_ = nullptr;
  int steps_ = 0;
};

}  // namespace generated
