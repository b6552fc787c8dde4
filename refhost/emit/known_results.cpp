#include "refhost/emit/known_results.h"

#include <fmt/format.h>

#include <optional>

#include "refhost/emit/call_writer.h"
#include "refhost/emit/place.h"
#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/constants.h"

namespace refhost {

using vel::ASTNode;

namespace {

bool isConstant(const ASTNode& node, std::string_view text) {
  return literalOf(node) != nullptr || text == "0" || text == "1";
}

// True if an AND or OR with a literal never gives the literal `number`.
bool excludes(const ASTNode& node, const ASTNode& number) {
  if (node.type() != vel::ASTType::Expression || literalOf(number) == nullptr) return false;
  const auto& expr = static_cast<const Expr&>(node);
  if (expr.kind != ExprKind::And && expr.kind != ExprKind::Or) return false;
  const std::uint64_t value = literalOf(number)->value.magnitude;
  for (int i = 0; i < 2; ++i) {
    const Literal* const literal = literalOf(*expr.leaf(i));
    if (literal == nullptr) continue;
    const std::uint64_t mask = literal->value.magnitude;
    const std::uint64_t missing = expr.kind == ExprKind::And ? value & ~mask : mask & ~value;
    if (missing != 0 || literal->value.negative) return true;
  }
  return false;
}

// How many levels of an expression are looked at, so that long chains take no time and no stack.
constexpr int kLevels = static_cast<int>(kChainPiece);

// The low bits that keep the value of `expr`: those of the type that the value has, or of the
// smaller one that it gets by an assignment or an operator. 0 for what is no integer.
std::uint64_t keptBits(const Expr& expr) {
  const auto bits = [](BasicDataType type) -> std::uint64_t {
    const ElementaryType* const row = isInteger(type) ? elementaryType(type) : nullptr;
    return row == nullptr ? 0 : ~std::uint64_t{0} >> (64 - 8 * row->size);
  };
  const std::uint64_t own = bits(typeOf(expr));
  const ASTNode* user = expr.parent();
  for (int level = 0; user != nullptr && user->type() == vel::ASTType::Expression; ++level) {
    if (level == kLevels) return own;
    user = user->parent();
  }
  std::uint64_t used = 0;
  if (user != nullptr && user->type() == vel::ASTType::ParameterList) {
    used = bits(typeOf(*user->parent()));
  } else if (user != nullptr && statementKindOf(*user) == StatementKind::Assignment) {
    used = bits(typeOf(*user->leaf(0)));
  }
  return used != 0 ? own & used : own;
}

// The bits of a value that compilers may know.
struct KnownBits {
  std::uint64_t ones = 0;
  std::uint64_t zeros = 0;

  bool any() const { return (ones | zeros) != 0; }
};

// An OR that gives all ones whatever its operands are is decided, and so is an AND that gives 0.
// gcc takes that for an overflow when the number is stored.
struct Logic {
  Logic(const Expr& expr, int levels);

  KnownBits left;
  KnownBits right;
  KnownBits result;
  bool decided = false;
};

KnownBits knownBits(const ASTNode& node, int levels = kLevels) {
  if (const auto constant = constantInteger(node)) {
    const auto bits = static_cast<std::uint64_t>(*constant);
    return {bits, ~bits};
  }
  if (node.type() != vel::ASTType::Expression || levels == 0) return {};
  // A time or a real number that is converted may give any bits.
  constexpr std::uint64_t kAll = ~std::uint64_t{0};
  if (literalOf(node) != nullptr) return {kAll, kAll};
  const auto& expr = static_cast<const Expr&>(node);
  if (expr.kind == ExprKind::Call) {
    const auto& call = static_cast<const Call&>(*expr.leaf(0));
    if (call.op() == nullptr) return {};  // compilers see through the macros of operators only
    KnownBits known;
    for (const ASTNode* const operand : parametersOf(call)) {
      const KnownBits bits = knownBits(*operand, levels - 1);
      known.ones |= bits.ones;
      known.zeros |= bits.zeros;
    }
    return known;
  }
  if (expr.kind == ExprKind::Multiply) {
    const bool zero = knownBits(*expr.leaf(0), levels - 1).zeros == kAll ||
                      knownBits(*expr.leaf(1), levels - 1).zeros == kAll;
    return {0, zero ? kAll : 0};
  }
  if (formOf(expr.kind) != ExprForm::Logic) return {};
  const Logic logic(expr, levels);
  return logic.decided ? KnownBits{} : logic.result;
}

Logic::Logic(const Expr& expr, int levels)
    : left(knownBits(*expr.leaf(0), levels - 1)), right(knownBits(*expr.leaf(1), levels - 1)) {
  std::uint64_t known = 0;
  if (expr.kind == ExprKind::Or) {
    result = {left.ones | right.ones, left.zeros & right.zeros};
    known = result.ones;
  } else if (expr.kind == ExprKind::And) {
    result = {left.ones & right.ones, left.zeros | right.zeros};
    known = result.zeros;
  } else {
    result = {left.ones ^ right.ones, left.zeros & right.zeros};
  }
  const std::uint64_t kept = known != 0 ? keptBits(expr) : 0;
  decided = kept != 0 && (kept & ~known) == 0;
}

// True of an operation whose result compilers know: on equal operands, on constants, on a constant
// and a BOOL, or on a number and an AND or OR that never gives it. Floats that are equal may be no
// numbers.
bool isObvious(const Expr& expr, std::string_view a, std::string_view b) {
  const ASTNode& left = *expr.leaf(0);
  const ASTNode& right = *expr.leaf(1);
  const bool first = isConstant(left, a);
  const bool second = isConstant(right, b);
  const bool boolean = typeOf(left) == BasicDataType::Bool;
  if (formOf(expr.kind) == ExprForm::Logic) {
    // TO_BOOL compares its operand, and SEL its condition.
    const bool parameter =
        expr.parent() != nullptr && expr.parent()->type() == vel::ASTType::ParameterList;
    return (first && second && expr.kind == ExprKind::Xor) ||
           ((first || second) && (boolean || parameter) && expr.kind == ExprKind::Or) ||
           ((first || second) && boolean && parameter && expr.kind == ExprKind::And);
  }
  if (formOf(expr.kind) != ExprForm::Comparison || isFloat(typeOf(left)) ||
      isFloat(typeOf(right))) {
    return false;
  }
  return a == b || (first && second) || ((first || second) && boolean) || excludes(left, right) ||
         excludes(right, left);
}

}  // namespace

bool isKnown(const ASTNode& node) {
  const KnownBits bits = knownBits(node);
  return ~(bits.ones | bits.zeros) == 0;
}

std::string hidden(const Expr& expr, BasicDataType type, std::string_view text) {
  if (type == BasicDataType::None) type = typeOf(*expr.leaf(0));
  const char* const name = type == BasicDataType::Pointer ? "u64" : cType(type);
  return fmt::format("vel_value_{}({})", name, text);
}

std::string plainOperation(const Expr& expr, BasicDataType type, std::string a, std::string b) {
  const ASTNode& left = *expr.leaf(0);
  const ASTNode& right = *expr.leaf(1);
  const bool logic = formOf(expr.kind) == ExprForm::Logic;
  const std::optional<Logic> known =
      logic ? std::optional<Logic>(std::in_place, expr, kLevels) : std::nullopt;
  if (known && known->decided) {
    if (known->left.any()) a = hidden(expr, type, a);
    if (known->right.any()) b = hidden(expr, type, b);
  } else if (isObvious(expr, unparenthesized(a), unparenthesized(b))) {
    const bool second = isConstant(right, unparenthesized(b));
    if (second) b = hidden(expr, type, b);
    if (!second || isConstant(left, unparenthesized(a))) a = hidden(expr, type, a);
  }
  return fmt::format("{} {} {}", a, traitsOf(expr.kind).c, b);
}

}  // namespace refhost
