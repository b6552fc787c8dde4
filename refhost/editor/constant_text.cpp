#include "refhost/editor/constant_text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <unordered_map>

#include "hostkit/encoding.h"
#include "refhost/semantics/constants.h"
#include "refhost/services/derived_types.h"
#include "refhost/value_format.h"
#include "velrt/arithmetic.h"

namespace refhost {
namespace {

constexpr Integer kNanosecondsPerMillisecond = 1000000;

// What an expression of the generated program gives.
struct Computed {
  BasicDataType type = BasicDataType::None;  // in C, where an untyped 0.1 is an LREAL
  Integer number = 0;                        // of an integer, a BOOL or any time
  double real = 0;
  std::u16string text;  // up to the first zero; the units of a STRING are bytes
};
using Result = std::optional<Computed>;

Result ofNumber(BasicDataType type, Integer number) { return Computed{type, number, 0, {}}; }

Result ofTruth(bool truth) { return ofNumber(BasicDataType::Bool, truth ? 1 : 0); }

Result ofDuration(BasicDataType type, Integer ticks) {
  const bool wide = type == BasicDataType::LTime;
  const Integer lowest = wide ? INT64_MIN : INT32_MIN;
  const Integer highest = wide ? INT64_MAX : INT32_MAX;
  return ticks < lowest || ticks > highest ? Result() : ofNumber(type, ticks);
}

// Rounding a sum, difference, product or quotient of two REALs that is computed in double gives
// what C computes in float.
Result ofReal(BasicDataType type, double value) {
  if (type == BasicDataType::Real) value = static_cast<double>(static_cast<float>(value));
  return std::isfinite(value) ? Result(Computed{type, 0, value, {}}) : Result();
}

double realOf(const Computed& value, BasicDataType type) {
  if (isFloat(value.type)) return value.real;
  return type == BasicDataType::Real ? static_cast<double>(static_cast<float>(value.number))
                                     : static_cast<double>(value.number);
}

Result ofLiteral(const LiteralValue& literal) {
  switch (literal.form) {
    case LiteralForm::Integer:  // constantOf() knows its value
      return {};
    case LiteralForm::Bool:
      return ofTruth(literal.magnitude != 0);
    case LiteralForm::Real: {
      const bool rounded = literal.fixedType && literal.type == BasicDataType::Real;
      return ofReal(rounded && !isSingle(literal.real) ? literal.type : BasicDataType::LReal,
                    literal.real);
    }
    case LiteralForm::Duration:
    case LiteralForm::Date:
    case LiteralForm::TimeOfDay:
    case LiteralForm::DateAndTime:
      return ofNumber(literal.type, literal.ticks);
    case LiteralForm::String:
      break;
  }
  Computed result{literal.type, 0, 0, {}};
  if (literal.type == BasicDataType::WString) {
    result.text = utf16(literal.text);
  } else {
    for (const char c : literal.text) result.text += static_cast<unsigned char>(c);
  }
  result.text.resize(std::min(result.text.find(u'\0'), result.text.size()));
  return result;
}

template <typename T>
Result ofComparison(ExprKind op, const T& a, const T& b) {
  switch (op) {
    case ExprKind::Less:
      return ofTruth(a < b);
    case ExprKind::Greater:
      return ofTruth(a > b);
    case ExprKind::LessEqual:
      return ofTruth(a <= b);
    case ExprKind::GreaterEqual:
      return ofTruth(a >= b);
    case ExprKind::Equal:
      return ofTruth(a == b);
    case ExprKind::NotEqual:
      return ofTruth(a != b);
    default:
      return {};
  }
}

Result ofOperation(ExprKind op, double a, double b, BasicDataType type) {
  switch (op) {
    case ExprKind::Add:
      return ofReal(type, a + b);
    case ExprKind::Subtract:
      return ofReal(type, a - b);
    case ExprKind::Multiply:
      return ofReal(type, a * b);
    case ExprKind::Divide:
      return b == 0 ? Result() : ofReal(type, a / b);
    default:
      return ofComparison(op, a, b);
  }
}

// Of numbers that have been converted to `type`. Arithmetic of integers has been folded before.
Result ofNumbers(ExprKind op, const Computed& a, const Computed& b, BasicDataType type) {
  if (isInteger(type)) {
    const auto converted = [type](const Computed& value) {
      return TypedConstant(static_cast<std::uint64_t>(value.number), type).value();
    };
    return ofComparison(op, converted(a), converted(b));
  }
  if (!isFloat(a.type) && !isFloat(b.type)) return {};
  const bool wide = a.type == BasicDataType::LReal || b.type == BasicDataType::LReal;
  const BasicDataType common = wide ? BasicDataType::LReal : BasicDataType::Real;
  return ofOperation(op, realOf(a, common), realOf(b, common), common);
}

Result ofLogic(ExprKind op, bool a, bool b) {
  if (op == ExprKind::And || op == ExprKind::AndThen) return ofTruth(a && b);
  if (op == ExprKind::Or || op == ExprKind::OrElse) return ofTruth(a || b);
  return op == ExprKind::Xor ? ofTruth(a != b) : ofComparison(op, a, b);
}

Result ofDurations(ExprKind op, const Computed& a, const Computed& b, BasicDataType type) {
  if (op == ExprKind::Add) return ofDuration(type, a.number + b.number);
  if (op == ExprKind::Subtract) return ofDuration(type, a.number - b.number);
  return ofComparison(op, a.number, b.number);
}

Result ofScale(ExprKind op, const Computed& duration, const Computed& factor, BasicDataType type) {
  const bool divides = op == ExprKind::Divide;
  if (isFloat(factor.type)) {
    const Result exact =
        ofOperation(op, static_cast<double>(duration.number), factor.real, BasicDataType::LReal);
    const bool fits = exact && std::fabs(exact->real) <= std::ldexp(1.0, 63);
    return fits ? ofDuration(type, static_cast<Integer>(exact->real)) : Result();
  }
  if (!divides) return ofDuration(type, duration.number * factor.number);
  const bool valid = factor.number != 0 && factor.number <= INT64_MAX;
  return valid ? ofDuration(type, duration.number / factor.number) : Result();
}

// A TOD or DT plus or minus a duration.
Result ofShift(ExprKind op, const Computed& point, const Computed& duration) {
  const bool clock = point.type == BasicDataType::TimeOfDay;
  const Integer unit =
      (duration.type == BasicDataType::LTime ? kNanosecondsPerMillisecond : 1) * (clock ? 1 : 1000);
  const Integer steps = duration.number / unit * (op == ExprKind::Subtract ? -1 : 1);
  if (clock) {
    return ofNumber(point.type, vel_tod_shift(static_cast<std::uint32_t>(point.number),
                                              static_cast<std::int64_t>(steps)));
  }
  const Integer seconds = point.number + steps;
  return seconds >= 0 && seconds <= UINT32_MAX ? ofNumber(point.type, seconds) : Result();
}

// Each constant is computed once, however many refer to it.
class ConstantEvaluation {
 public:
  Result of(const VarSymbol& constant);

 private:
  static constexpr int kDeepest = 256;  // operators and constants one within the other

  Result of(const ASTNode& node);
  Result computed(const Expr& expr);
  Result unary(const Expr& expr);
  Result binary(const Expr& expr);
  Result converted(const ASTNode& node, BasicDataType type);

  std::unordered_map<const VarSymbol*, Result> known_;  // empty while it is being computed
  int depth_ = 0;
};

// The value as it is stored in the variable.
Result ConstantEvaluation::of(const VarSymbol& constant) {
  const BasicDataType type = valueType(constant.dataType());
  if (constant.value != nullptr) return ofNumber(type, constant.value->value());
  if (!constant.constant || constant.refused || constant.initial == nullptr) return {};
  if (const auto known = known_.find(&constant); known != known_.end()) return known->second;
  known_[&constant] = {};
  Result result = of(*constant.initial);
  if (!result) return {};
  const BasicDataType from = typeOf(*constant.initial);
  if (isFloat(type) && isNumber(from)) {
    result = ofReal(type, realOf(*result, type));
  } else if (type == BasicDataType::LTime && from == BasicDataType::Time) {
    result = ofDuration(type, result->number * kNanosecondsPerMillisecond);
  } else if (type != from || elementaryType(type) == nullptr) {
    return {};
  } else if (isText(type)) {
    const auto capacity = static_cast<std::size_t>(stringLength(*constant.dataType()));
    result->text.resize(std::min(result->text.size(), capacity));
  } else {
    result->type = type;
  }
  return known_[&constant] = result;
}

Result ConstantEvaluation::of(const ASTNode& node) {
  if (const auto integer = constantOf(node)) return ofNumber(integer->type(), integer->value());
  if (node.type() != vel::ASTType::Expression || depth_ == kDeepest) return {};
  ++depth_;
  Result result = computed(static_cast<const Expr&>(node));
  --depth_;
  return result;
}

Result ConstantEvaluation::computed(const Expr& expr) {
  switch (formOf(expr.kind)) {
    case ExprForm::Literal:
      return ofLiteral(literalOf(expr)->value);
    case ExprForm::Variable: {
      const VarSymbol* const variable = asVariable(expr.symbol);
      return variable != nullptr ? of(*variable) : Result();
    }
    case ExprForm::Unary:
      return unary(expr);
    case ExprForm::Arithmetic:
    case ExprForm::Comparison:
    case ExprForm::Logic:
      return binary(expr);
    case ExprForm::Access:
    case ExprForm::Call:
    case ExprForm::Parts:
      break;
  }
  return {};
}

Result ConstantEvaluation::unary(const Expr& expr) {
  const BasicDataType type = typeOf(expr);
  const Result operand = of(*expr.leaf(0));
  if (!operand) return {};
  if (expr.kind == ExprKind::Not) {
    return type == BasicDataType::Bool ? ofTruth(operand->number == 0) : Result();
  }
  if (isDuration(type)) return ofDuration(type, -operand->number);
  return isFloat(operand->type) ? ofReal(operand->type, -operand->real) : Result();
}

Result ConstantEvaluation::binary(const Expr& expr) {
  const CommonType common = commonType(expr);
  const BasicDataType type = common.operands;
  const Result left = converted(*expr.leaf(0), type);
  const Result right = left ? converted(*expr.leaf(1), type) : Result();
  if (!right) return {};
  switch (common.kind) {
    case CommonType::Kind::Number:
      return ofNumbers(expr.kind, *left, *right, type);
    case CommonType::Kind::Logic:
      return ofLogic(expr.kind, left->number != 0, right->number != 0);
    case CommonType::Kind::Same:
      return ofComparison(expr.kind, left->number, right->number);
    case CommonType::Kind::Strings:
      return ofComparison(expr.kind, left->text, right->text);
    case CommonType::Kind::Durations:
      return ofDurations(expr.kind, *left, *right, type);
    case CommonType::Kind::Scale:
      return isDuration(left->type) ? ofScale(expr.kind, *left, *right, type)
                                    : ofScale(expr.kind, *right, *left, type);
    case CommonType::Kind::Shift:
      return ofShift(expr.kind, *left, *right);
    case CommonType::Kind::Difference:
      return ofDuration(common.result, (left->number - right->number) *
                                           (type == BasicDataType::TimeOfDay ? 1 : 1000));
    case CommonType::Kind::Invalid:
    case CommonType::Kind::Unknown:
    case CommonType::Kind::Bits:
    case CommonType::Kind::Pointers:
    case CommonType::Kind::Step:
    case CommonType::Kind::Distance:
      break;
  }
  return {};
}

// An operand as the generated program converts it to the type in which the operator computes. A
// number remains what it is beside a duration, and an integer literal beside any number.
Result ConstantEvaluation::converted(const ASTNode& node, BasicDataType type) {
  const Result value = of(node);
  if (!value) return {};
  const BasicDataType own = typeOf(node);
  const Literal* const literal = literalOf(node);
  if (isFloat(type) && literal != nullptr && isFloat(value->type)) {
    return ofReal(type == BasicDataType::Real ? type : value->type, value->real);
  }
  if (isFloat(type) && literal == nullptr && own != type) return ofReal(type, realOf(*value, type));
  const bool milliseconds = own == BasicDataType::Time && type == BasicDataType::LTime;
  return milliseconds ? ofDuration(type, value->number * kNanosecondsPerMillisecond) : value;
}

template <typename T>
std::string bytesOf(const T& value, std::size_t size = sizeof(T)) {
  return {reinterpret_cast<const char*>(&value), size};
}

// The memory of a variable with the value.
std::string memoryOf(const Computed& value) {
  if (value.type == BasicDataType::Real) return bytesOf(static_cast<float>(value.real));
  if (value.type == BasicDataType::LReal) return bytesOf(value.real);
  if (value.type == BasicDataType::String) return {value.text.begin(), value.text.end()};
  if (value.type == BasicDataType::WString) {
    return {reinterpret_cast<const char*>(value.text.data()),
            value.text.size() * sizeof value.text[0]};
  }
  const auto size = static_cast<std::size_t>(elementaryType(value.type)->size);
  return bytesOf(static_cast<std::uint64_t>(value.number), size);
}

}  // namespace

std::string constantText(const VarSymbol& constant) {
  const vel::SymbolDataType* const type = constant.dataType();
  const Result value = type != nullptr ? ConstantEvaluation().of(constant) : Result();
  if (!value) return {};
  const auto* const enumeration = dynamic_cast<const EnumType*>(type);
  if (enumeration == nullptr) return valueText(value->type, type->typeName(), memoryOf(*value));
  for (const auto& named : enumeration->values()) {
    if (named->value != value->number) continue;
    return isAnonymous(*type) ? named->name() : type->name() + '#' + named->name();
  }
  return textOf(value->number);
}

}  // namespace refhost
