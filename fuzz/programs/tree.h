// The syntax tree of a random program: what is generated, evaluated and written
// as Structured Text.
#pragma once

#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "fuzz/programs/values.h"

namespace generated {

struct Operator;

struct Expr {
  enum Kind {
    Literal,
    Variable,
    Global,
    Element,  // of an array, or behind a pointer: its place and the subscripts
    Member,
    Pointed,
    Address,
    Whole,  // the first values of an array or a structure
    Operation,
    Call
  };
  Kind kind = Literal;
  const Type* type = nullptr;    // that it has where it stands; null for an input that is left out
  std::string text{};            // the literal without its type, or a name
  std::vector<Expr> operands{};  // of a call of a function one for each parameter
  Value value{};                 // of a literal, or of a constant expression
  bool bare = false;             // a literal that is written without its type
  const Operator* op = nullptr;
  const Unit* unit = nullptr;
};

struct Statement {
  enum Kind { Assign, If, Case, For, While, Repeat, Block, Exit, Continue, Return };
  Kind kind = Assign;
  Expr target{};  // what is assigned, the control variable, or the block called
  // What is assigned; a condition for each branch; the selector; start, end and step; the
  // block's parameters.
  std::vector<Expr> exprs{};
  std::vector<std::vector<Statement>> bodies{};  // one more than conditions or labels for ELSE
  std::vector<std::pair<Expr, Expr>> labels{};   // first and last value of each branch
};
using Statements = std::vector<Statement>;

struct Variable {
  enum Role { Input, InOut, Output, Local, Result, Constant, Global };
  std::string name;
  const Type* type;
  Role role;
  Expr initial{};  // without a type for none
};

struct Unit {
  enum Kind { Function, FunctionBlock, Program, Globals };
  Kind kind;
  std::string name;
  std::vector<Variable> variables{};
  Statements body{};
};

// The first unit has the global variables, the last is the PROGRAM; a unit calls only those
// before it. Addresses of types and units last as long as it.
struct Units {
  Units() = default;
  Units(Units&&) = default;
  std::deque<Type> types;
  std::deque<Unit> list;
};

std::vector<Variable> parametersOf(const Unit& unit);

std::string text(const Expr& expr);
std::string text(const Units& units);

}  // namespace generated
