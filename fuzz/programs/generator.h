// Makes a program from a seed: expressions.cpp, statements.cpp and, for units with their
// declarations, generator.cpp.
#pragma once

#include "fuzz/programs/operators.h"
#include "fuzz/programs/programs.h"

namespace generated {

constexpr int kDepth = 3;  // of expressions

// A text of any length for one of this length.
const Type& plain(const Type& of);
// What an assignment gives a value.
bool isHeld(const Type& type);
// A function's first variable is its result.
const Type& resultOf(const Unit& function);

Expr operation(const Operator& op, const Type& type, std::vector<Expr> operands);
Expr operation(const char* name, const Type& type, std::vector<Expr> operands);

class Generator {
 public:
  Generator(std::uint64_t seed, std::string suffix) : random_(seed), suffix_(std::move(suffix)) {}

  Units units();

 private:
  // When a literal is written without its type; AsItself where it has the type alone, too.
  enum class Bare { Never, AsItself, Always };
  enum class Access { Read, Write, Refer };

  // Literals, and constant expressions of a value.
  Wide wholeNumber(const Type& type);
  Expr literal(const Type& type, Bare bare);
  Expr integerLiteral(const Type& type, Wide number, Bare bare);
  Expr textLiteral(const Type& type);
  Expr constant(const Type& type, Wide number, Bare bare);
  Expr term(const Type& type);

  // Places, and other expressions; without a type when there is none.
  bool allows(const Variable& each, Access access) const;
  void collect(std::vector<Expr>& found, const Expr& place, Access access, const Predicate& wanted);
  Expr place(Access access, const Predicate& wanted);
  Expr complete(Expr place);
  Expr subscript(std::pair<long, long> bound);
  Expr leaf(const Type& type, Bare bare);
  Expr address(const Type& type);
  Expr expression(const Type& wanted, int depth, Bare bare = Bare::Never);
  Expr assigned(const Type& type, int depth);
  Expr count(const Type& shifted, int depth);
  // False when there is none.
  bool call(Expr& expr, int depth);
  bool compare(Expr& expr);
  bool operate(const Operator& op, const Type& type, int depth, Expr& expr);
  bool arguments(std::vector<Expr>& to, const Unit& callee, int depth);

  Statements body(int depth);
  void addStatement(Statements& to, int depth);
  std::pair<Expr, Expr> label(const Type& type);
  void loop(Statement& result, int depth);

  const Type& any(const Predicate& wanted);
  Unit& unit() { return units_.list.back(); }
  void addVariable(const std::string& name, const Type& type, Variable::Role role);
  void addGlobals();
  void addType(int index);
  void array(Type& made, const Type& element);
  void addUnit(Unit::Kind kind, const std::string& name);

  Random random_;
  std::string suffix_;
  Units units_;
  std::vector<std::string> controls_;  // of the loops around a statement
  int nesting_ = 0;                    // of subscripts
};

}  // namespace generated
