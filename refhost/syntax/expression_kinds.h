// Kinds of expressions and their traits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>

#include "host/expression.h"

namespace refhost {

// Each kind with its leaves, and a row in kExprTraits.
enum class ExprKind : std::uint8_t {
  Literal,   // [Literal]
  Variable,  // none: its text is a name or a direct address such as `%IX0.3`
  // Accesses.
  Member,       // [base Expr, member Text]
  Element,      // [base Expr, subscript Expr...]
  Dereference,  // [base Expr]
  Part,         // [base Expr]: its `partBits` bits from bit bitAccessOffset() on
  Call,         // [Call]
  // Unary operators: [operand].
  Negate,
  Not,
  // Binary operators: [left, right].
  Power,
  Multiply,
  Divide,
  Modulo,
  Add,
  Subtract,
  Less,
  Greater,
  LessEqual,
  GreaterEqual,
  Equal,
  NotEqual,
  And,
  Xor,
  Or,
  AndThen,
  OrElse,
  // Initial values of arrays and structures, which have the type of their variable.
  ArrayValue,   // [Expr...]
  Repeat,       // [count Expr, Expr...]
  StructValue,  // [Argument...]
};

// Every switch over forms names them all, so that a new form does not compile until it is handled.
enum class ExprForm : std::uint8_t {
  Literal,
  Variable,
  Access,
  Call,
  Unary,
  Arithmetic,
  Comparison,
  Logic,
  Parts,
};

struct ExprTraits {
  ExprForm form;
  const char* source = "";  // of an operator: its token in Structured Text
  const char* c = "";       // and in C
};

// Indexed by kind. Power has no C token, since it is a function of the runtime.
// clang-format off
constexpr ExprTraits kExprTraits[] = {
    {ExprForm::Literal},
    {ExprForm::Variable},
    {ExprForm::Access}, {ExprForm::Access}, {ExprForm::Access}, {ExprForm::Access},
    {ExprForm::Call},
    {ExprForm::Unary, "-", "-"},
    {ExprForm::Unary, "NOT", "!"},
    {ExprForm::Arithmetic, "**"},
    {ExprForm::Arithmetic, "*", "*"},
    {ExprForm::Arithmetic, "/", "/"},
    {ExprForm::Arithmetic, "MOD", "%"},
    {ExprForm::Arithmetic, "+", "+"},
    {ExprForm::Arithmetic, "-", "-"},
    {ExprForm::Comparison, "<", "<"},
    {ExprForm::Comparison, ">", ">"},
    {ExprForm::Comparison, "<=", "<="},
    {ExprForm::Comparison, ">=", ">="},
    {ExprForm::Comparison, "=", "=="},
    {ExprForm::Comparison, "<>", "!="},
    {ExprForm::Logic, "AND", "&"},
    {ExprForm::Logic, "XOR", "^"},
    {ExprForm::Logic, "OR", "|"},
    {ExprForm::Logic, "AND_THEN", "&&"},
    {ExprForm::Logic, "OR_ELSE", "||"},
    {ExprForm::Parts}, {ExprForm::Parts}, {ExprForm::Parts},
};
// clang-format on
static_assert(std::size(kExprTraits) == static_cast<std::size_t>(ExprKind::StructValue) + 1,
              "each kind has its row");

constexpr const ExprTraits& traitsOf(ExprKind kind) {
  return kExprTraits[static_cast<std::size_t>(kind)];
}
constexpr ExprForm formOf(ExprKind kind) { return traitsOf(kind).form; }
constexpr bool isAccess(ExprKind kind) { return formOf(kind) == ExprForm::Access; }
constexpr bool isArithmetic(ExprKind kind) { return formOf(kind) == ExprForm::Arithmetic; }
constexpr bool isComparison(ExprKind kind) { return formOf(kind) == ExprForm::Comparison; }

// The plugin distinguishes literals, variables and accesses only.
constexpr ::Expression::Operator operatorOf(ExprKind kind) {
  if (kind == ExprKind::Literal) return ::Expression::Constant;
  if (kind == ExprKind::Variable) return ::Expression::Variable;
  if (isAccess(kind)) return ::Expression::Typed;
  return static_cast<::Expression::Operator>(kind == ExprKind::Call ? 2
                                                                    : 100 + static_cast<int>(kind));
}

}  // namespace refhost
