// The syntax tree of a random program: what is generated, evaluated and written
// as Structured Text.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "fuzz/programs/values.h"

namespace generated {

struct Operator;

struct Expr {
  enum Kind { Literal, Variable, Operation, Call };
  Kind kind = Literal;
  const Type* type = nullptr;  // that it has where it stands
  std::string text{};          // the literal without its type, or a name
  bool bare = false;           // a literal that is written without its type
  Value value{};               // of a literal
  const Operator* op = nullptr;
  std::vector<Expr> operands{};  // of a call of a function one for each input
};

struct Statement {
  enum Kind { Assign, If, Case, For, While, Repeat, Block, Exit, Continue, Return };
  Kind kind = Assign;
  std::string target;  // what is assigned, the control variable, or the block called
  // What is assigned; a condition for each branch; the selector; start, end and step; the
  // block's inputs.
  std::vector<Expr> exprs;
  std::vector<std::vector<Statement>> bodies;  // one more than conditions or labels for ELSE
  std::vector<std::pair<long, long>> labels;   // first and last value of each branch
};
using Statements = std::vector<Statement>;

struct Variable {
  enum Role { Input, Output, Local, Result, Instance };
  std::string name;
  const Type* type;
  Role role;
  int length = 0;  // of a text in characters
  Expr initial{};
  std::string block{};  // of an instance
};

struct Unit {
  enum Kind { Function, FunctionBlock, Program };
  Kind kind;
  std::string name;
  std::vector<Variable> variables;
  Statements body;
};

// The last unit is the PROGRAM; a unit calls only those before it.
using Units = std::vector<Unit>;
const Unit& unitOf(const Units& units, const std::string& name);

std::string text(const Expr& expr);
std::string text(const Units& units);

}  // namespace generated
