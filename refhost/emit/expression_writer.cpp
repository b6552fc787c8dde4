#include "refhost/emit/expression_writer.h"

#include <fmt/format.h>

#include "core/operator.h"
#include "hostkit/literal_text.h"
#include "refhost/semantics/constants.h"

namespace refhost {

using vel::ASTNode;

namespace {

// The operator of which `node` is an operand, null for none.
const OperatorTraits* operatorOf(const ASTNode& node) {
  const ASTNode* const list = node.parent();
  if (list == nullptr || list->type() != vel::ASTType::ParameterList) return nullptr;
  return static_cast<const Call&>(*list->parent()).traits();
}

// True of a TIME operand whose operator takes an LTIME. The operator's C text does not convert it,
// so the host passes it in nanoseconds.
bool isScaledParameter(const ASTNode& node, const OperatorTraits& op) {
  if (typeOf(node) != BasicDataType::Time) return false;
  if (op.has(OperatorTraits::kTakesLTime)) return true;
  const auto& call = static_cast<const Call&>(*node.parent()->parent());
  return op.chooses() && typeOf(call) == BasicDataType::LTime;
}

// Most operators take a pointer as an integer; the others pass it on.
bool isPointerAsNumber(const ASTNode& node, const OperatorTraits& op) {
  return typeOf(node) == BasicDataType::Pointer && !op.keepsPointers();
}

// True of a dereferenced string, whose C text is the pointer to its first character.
bool isPointedText(const ASTNode& node) {
  return isText(typeOf(node)) && static_cast<const Expr&>(node).kind == ExprKind::Dereference;
}

// The type that the C of an operator must have a number in, None if any will do. C has numbers
// beyond DINT as LINT and smaller ones as int, and then the result of the operator too.
BasicDataType unsignedType(const ASTNode& node, const OperatorTraits& op) {
  const Literal* const literal = literalOf(node);
  if (literal == nullptr || literal->value.form != LiteralForm::Integer || literal->value.negative)
    return BasicDataType::None;
  const BasicDataType own = typeOf(node);
  if (own == BasicDataType::UDInt || own == BasicDataType::ULInt) return own;
  const bool chosen = op.chooses() && literal->value.magnitude > INT32_MAX &&
                      literal->value.magnitude <= UINT32_MAX &&
                      typeOf(*node.parent()->parent()) == BasicDataType::UDInt;
  return chosen ? BasicDataType::UDInt : BasicDataType::None;
}

// True if its C text binds tighter than every binary operator.
bool isPrimary(const ASTNode& node) {
  if (node.type() != vel::ASTType::Expression) return false;
  const auto& expr = static_cast<const Expr&>(node);
  if (const Literal* const literal = literalOf(expr)) return !isNegative(literal->value);
  if (expr.kind == ExprKind::Variable || isAccess(expr.kind)) return true;
  if (expr.kind == ExprKind::Call) return static_cast<const Call*>(expr.leaf(0))->op() == nullptr;
  return isCastOrCall(expr) || isComplementCall(expr);
}

// True of a number that an operator selects, but that its result's type may not hold. C would
// convert all of them to a type of its own choice.
bool isSelectedOtherwise(const ASTNode& node, const OperatorTraits& op) {
  const ASTNode& list = *node.parent();
  const bool selected = op.selects() && list.leaf(0) != &node;
  if (!selected || literalOf(node) != nullptr) return false;
  const BasicDataType result = typeOf(*list.parent());
  return isNumber(result) && isNumber(typeOf(node)) && !widens(typeOf(node), result);
}

// True of a number that the C of an operator would compare after it has changed the sign of one of
// the two. They are compared in the type of the result.
bool isComparedWithOtherSign(const ASTNode& node, const OperatorTraits& op) {
  if (!op.has(OperatorTraits::kCompares)) return false;
  const BasicDataType result = typeOf(static_cast<const Call&>(*node.parent()->parent()));
  const auto isPositive = [](const ASTNode& operand) {
    const Literal* const literal = literalOf(operand);
    return literal != nullptr && !isNegative(literal->value);
  };
  bool hasSigned = false;
  bool hasUnsigned = false;
  for (int i = 0; i < node.parent()->leavesCount(); ++i) {
    const ASTNode& operand = *node.parent()->leaf(i);
    const BasicDataType type = typeOf(operand);
    if (!isInteger(type) && !(isFloat(type) && isFloat(result))) return false;
    hasSigned = hasSigned || (isSigned(type) && !isPositive(operand));
    hasUnsigned = hasUnsigned || type == BasicDataType::UDInt || type == BasicDataType::ULInt;
  }
  return hasSigned && hasUnsigned && isNumber(result) && typeOf(node) != result &&
         !isPositive(node);
}

// The type of a literal that an operator passes on, computes or compares in a wider one of C, if
// that makes a difference to a variable's value: a REAL that is rounded, and the lowest number of a
// small type, which has no absolute value in it. None for all else.
BasicDataType narrowedLiteral(const ASTNode& node, const OperatorTraits& op) {
  const Literal* const literal = literalOf(node);
  const bool numeric = op.family == OperatorFamily::Numeric;
  const bool passed = op.result == OperatorTraits::Result::Passed;
  if (literal == nullptr || !(numeric || passed || op.has(OperatorTraits::kCompares))) return {};
  const BasicDataType type = typeOf(node);
  const LiteralValue& value = literal->value;
  if (type == BasicDataType::Real && value.form == LiteralForm::Real) {
    return isSingle(value.real) ? BasicDataType::None : type;
  }
  const bool lowest = numeric && value.form == LiteralForm::Integer && isInteger(type) &&
                      !integerFits(false, value.magnitude, type);
  return lowest ? type : BasicDataType::None;
}

// What is shifted to the left, if compilers may see that it is a negative or a large constant.
bool isShiftedConstant(const ASTNode& node, const OperatorTraits& op) {
  const bool shifted = op.has(OperatorTraits::kShiftsLeft) && node.parent()->leaf(0) == &node;
  if (!shifted || !isInteger(typeOf(node)) || !isSigned(typeOf(node))) return false;
  return constantOf(node) || static_cast<const Expr&>(node).kind == ExprKind::Call;
}

// A constant that is converted to a type that does not hold it, of which compilers warn.
bool isOutOfRange(const ASTNode& operand) {
  return isFloat(typeOf(operand)) &&
         convertsOutOfRange(static_cast<const Call&>(*operand.parent()->parent()));
}

}  // namespace

std::string ExpressionWriter::expressionText(ASTNode* expression) {
  std::string text;
  if (expression == nullptr) return text;
  if (kindOf(*expression) == NodeKind::Invocation)
    return calls.plainText(static_cast<Call&>(*expression));
  if (expression->type() == vel::ASTType::Expression) {
    const OperatorTraits* const op = operatorOf(*expression);
    const BasicDataType number =
        op != nullptr ? unsignedType(*expression, *op) : BasicDataType::None;
    if (number != BasicDataType::None) {
      appendLiteral(literalOf(*expression)->value, number, text);
      return text;
    }
    const auto& expr = static_cast<const Expr&>(*expression);
    if (op != nullptr && op->has(OperatorTraits::kGivesAddress) && isAccess(expr.kind)) {
      text = places.of(expr).load();  // has an address, as an expression may not
    } else {
      append(expr, text);
    }
    if (op != nullptr && isPointerAsNumber(*expression, *op)) {
      text = "(uintptr_t)(" + text + ")";
    } else if (op != nullptr && op->has(OperatorTraits::kGivesAddress) &&
               isPointedText(*expression)) {
      text.insert(0, 1, '*');
    } else if (op != nullptr && isScaledParameter(*expression, *op)) {
      text = fmt::format("((i64)({}) * 1000000)", text);
    } else if (op != nullptr && op->has(OperatorTraits::kWritesOperandsBare) &&
               !isPrimary(*expression) && literalOf(*expression) == nullptr) {
      text = "(" + text + ")";
    } else if (op != nullptr && isSelectedOtherwise(*expression, *op)) {
      text = fmt::format("({}){}", cType(typeOf(*expression->parent()->parent())), enclosed(text));
    } else if (op != nullptr && isComparedWithOtherSign(*expression, *op)) {
      text =
          fmt::format("({}){}", cType(typeOf(static_cast<Call&>(*expression->parent()->parent()))),
                      enclosed(text));
    } else if (op != nullptr && narrowedLiteral(*expression, *op) != BasicDataType::None) {
      text = fmt::format("({}){}", cType(narrowedLiteral(*expression, *op)), enclosed(text));
    } else if (op != nullptr && isShiftedConstant(*expression, *op)) {
      text = fmt::format("vel_value_{}({})", cType(typeOf(*expression)), text);
    } else if (op != nullptr && isOutOfRange(*expression)) {
      text = "vel_value_f64(" + text + ")";
    }
  }
  if (expression->type() == vel::ASTType::ConstantValue) {
    const LiteralValue& value = static_cast<Literal&>(*expression).value;
    appendLiteral(value, BasicDataType::None, text);
  }
  return text;
}

void ExpressionWriter::append(const Expr& expr, std::string& out) {
  if (!body_.held.empty()) {
    const auto held = body_.held.find(&expr);
    if (held != body_.held.end()) {
      out += held->second;
      return;
    }
  }
  switch (formOf(expr.kind)) {
    case ExprForm::Literal:
      appendLiteral(literalOf(expr)->value, BasicDataType::None, out);
      break;
    case ExprForm::Variable:
      out += places.of(expr).load();
      break;
    case ExprForm::Access:
      out += file_.effects.any() ? inOrder(PlaceWriter::partsOf(expr), Uses::Once,
                                           [&] { return places.of(expr).load(); })
                                 : places.of(expr).load();
      break;
    case ExprForm::Call:
      out += calls.operandText(static_cast<const Call&>(*expr.leaf(0)));
      break;
    case ExprForm::Unary:
      unary(expr, out);
      break;
    case ExprForm::Arithmetic:
    case ExprForm::Comparison:
    case ExprForm::Logic:
      binary(expr, out);
      break;
    case ExprForm::Parts:  // InitialWriter writes these
      break;
  }
}

void ExpressionWriter::operand(const ASTNode& node, std::string& out) {
  const bool bare = isPrimary(node);
  if (!bare) out += '(';
  out += expressionText(const_cast<ASTNode*>(&node));
  if (!bare) out += ')';
}

std::string ExpressionWriter::condition(const ASTNode& node) {
  return std::string(unparenthesized(expressionText(const_cast<ASTNode*>(&node))));
}

void ExpressionWriter::converted(const ASTNode& node, BasicDataType type, std::string& out) {
  const BasicDataType own = typeOf(node);
  const Literal* const literal = literalOf(node);
  // A ULINT literal that exceeds LINT wraps by a cast, since C has no such constant of type LINT.
  const bool wraps = literal != nullptr && literal->value.form == LiteralForm::Integer &&
                     isInteger(type) &&
                     !integerFits(literal->value.negative, literal->value.magnitude, type);
  if (literal != nullptr && !wraps) {
    const bool negative = isNegative(literal->value);
    if (negative) out += '(';
    appendLiteral(literal->value, type, out);
    if (negative) out += ')';
    return;
  }
  if (own == type || own == BasicDataType::None || type == BasicDataType::None) {
    operand(node, out);
  } else if (own == BasicDataType::Time && type == BasicDataType::LTime) {
    out += "((i64)";
    operand(node, out);
    out += " * 1000000)";
  } else {
    out += fmt::format("({})", own == BasicDataType::Pointer ? "uintptr_t" : cType(type));
    operand(node, out);
  }
}

std::string ExpressionWriter::variableText(vel::SymbolVar* variable, int, const std::string&) {
  if (variable == nullptr) return {};
  const auto& symbol = *static_cast<const VarSymbol*>(variable);
  // In C such a string parameter is a pointer to its first character.
  const bool pointer =
      symbol.indirect || symbol.role == Role::Result ||
      (symbol.role == Role::Output && symbol.owner->type() == vel::POUType::Function);
  const bool pointed = pointer && isText(valueType(symbol.dataType()));
  return (pointed ? "*" : "") + places.of(symbol).load();
}

const char* ExpressionWriter::optionText(const char* name) {
  return std::string_view(name) == "localio.addr" ? file_.services.settings.localIoAddress.c_str()
                                                  : "";
}

}  // namespace refhost
