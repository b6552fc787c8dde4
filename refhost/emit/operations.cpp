#include <fmt/format.h>

#include "hostkit/literal_text.h"
#include "refhost/emit/expression_writer.h"
#include "refhost/emit/known_results.h"
#include "refhost/semantics/constants.h"

namespace refhost {

using vel::ASTNode;

namespace {

// The unsigned type in which sums and products wrap.
const char* wrappingType(BasicDataType type) {
  return type == BasicDataType::LInt || type == BasicDataType::LTime ? "u64" : "u32";
}

bool isSmall(BasicDataType type) {
  const ElementaryType* const row = elementaryType(type);
  return row != nullptr && row->size < 4;
}

// C promotes the smaller unsigned types to int. Floats do not wrap at all.
bool wrapsByItself(BasicDataType type) {
  return isFloat(type) || type == BasicDataType::UDInt || type == BasicDataType::ULInt;
}

// The other operand of an XOR of a USINT or UINT with ones, of which it is the complement.
const ASTNode* complemented(const Expr& expr) {
  const BasicDataType type = typeOf(expr);
  const bool small = type == BasicDataType::USInt || type == BasicDataType::UInt;
  for (int i = 0; small && expr.kind == ExprKind::Xor && i < 2; ++i) {
    const Literal* const ones = literalOf(*expr.leaf(i));
    const ASTNode& other = *expr.leaf(1 - i);
    const std::uint64_t all = type == BasicDataType::USInt ? 255 : 65535;
    if (ones != nullptr && ones->value.magnitude == all && typeOf(other) == type) return &other;
  }
  return nullptr;
}

}  // namespace

bool isCastOrCall(const Expr& expr) {
  if (!isArithmetic(expr.kind) || untypedNumber(expr)) return false;
  const CommonType common = commonType(expr);
  if (common.kind != CommonType::Kind::Number || !isInteger(common.operands)) return false;
  const bool divides = expr.kind == ExprKind::Divide || expr.kind == ExprKind::Modulo;
  return divides || !wrapsByItself(common.operands);
}

bool isComplementCall(const Expr& expr) {
  const BasicDataType type = typeOf(expr);
  return (expr.kind == ExprKind::Not &&
          (type == BasicDataType::USInt || type == BasicDataType::UInt)) ||
         complemented(expr) != nullptr;
}

void ExpressionWriter::unary(const Expr& expr, std::string& out) {
  const ASTNode& inner = *expr.leaf(0);
  const BasicDataType type = typeOf(expr);
  if (expr.kind == ExprKind::Not) {
    if (isComplementCall(expr)) {
      out +=
          fmt::format("vel_not_{}({})", cType(type), expressionText(const_cast<ASTNode*>(&inner)));
      return;
    }
    if (type == BasicDataType::Bool || type == BasicDataType::None) {
      out += '!';
    } else {
      out += fmt::format("({})~", cType(type));
      // gcc takes the value of a BOOL for one, also after a cast.
      const bool call = inner.type() == vel::ASTType::Expression &&
                        static_cast<const Expr&>(inner).kind == ExprKind::Call;
      if (call || (isKnown(inner) && !constantInteger(inner))) {
        out += hidden(expr, type, expressionText(const_cast<ASTNode*>(&inner)));
        return;
      }
    }
    operand(inner, out);
    return;
  }
  if (isFloat(type) || type == BasicDataType::None) {
    out += '-';
    operand(inner, out);
  } else if (isSmall(type)) {
    out += fmt::format("({})-", cType(type));
    operand(inner, out);
  } else {
    const char* const wrapping = wrappingType(type);
    out += fmt::format("({})(0 - ({})", cType(type), wrapping);
    operand(inner, out);
    out += ')';
  }
}

// A long chain is split into pieces that are computed one after the other, since compilers limit
// the nesting of parentheses.
void ExpressionWriter::binary(const Expr& expr, std::string& out) {
  std::vector<const Expr*> pieces;
  const Expr* at = &expr;
  while (at->chain > kChainPiece && !untypedNumber(*at)) {
    at = static_cast<const Expr*>(at->leaf(0));
    if (body_.held.count(at) != 0) break;
    if (at->chain % kChainPiece == 0) pieces.push_back(at);
  }
  if (pieces.empty()) {
    binaryPiece(expr, out);
    return;
  }
  out += "({ ";
  for (auto piece = pieces.rbegin(); piece != pieces.rend(); ++piece) {
    std::string text;
    append(**piece, text);
    const std::string name = body_.newName();
    out += fmt::format("__auto_type {} = {}; ", name, text);
    body_.held[*piece] = name;
  }
  binaryPiece(expr, out);
  out += "; })";
  for (const Expr* const piece : pieces) body_.held.erase(piece);
}

void ExpressionWriter::binaryPiece(const Expr& expr, std::string& out) {
  if (!file_.effects.any()) {
    operation(expr, out);
    return;
  }
  out += inOrder({expr.leaf(0), expr.leaf(1)}, Uses::Once, [&] {
    std::string text;
    operation(expr, text);
    return text;
  });
}

void ExpressionWriter::operation(const Expr& expr, std::string& out) {
  using Kind = CommonType::Kind;
  const CommonType common = commonType(expr);
  const ExprKind op = expr.kind;
  const ASTNode& left = *expr.leaf(0);
  const ASTNode& right = *expr.leaf(1);
  if (common.kind == Kind::Strings) {
    out +=
        common.operands == BasicDataType::String ? "vel_string_compare(" : "vel_wstring_compare(";
    out += expressionText(const_cast<ASTNode*>(&left)) + ", ";
    out += expressionText(const_cast<ASTNode*>(&right));
    out += fmt::format(") {} 0", traitsOf(op).c);
    return;
  }
  if (common.kind == Kind::Pointers || common.kind == Kind::Step || common.kind == Kind::Distance) {
    pointers(expr, common, out);
    return;
  }
  if (isArithmetic(op)) {
    if (common.kind == Kind::Number || common.kind == Kind::Durations) {
      numbers(expr, common.operands, out);
      return;
    }
    if (op == ExprKind::Power) {
      numbers(expr, BasicDataType::LReal, out);
      return;
    }
    times(expr, common, out);
    return;
  }
  if (const ASTNode* const inner = complemented(expr)) {
    out += fmt::format("vel_not_{}({})", cType(typeOf(expr)),
                       expressionText(const_cast<ASTNode*>(inner)));
    return;
  }
  const bool convert =
      common.kind == Kind::Number || common.kind == Kind::Bits || common.kind == Kind::Durations;
  const BasicDataType type = convert ? common.operands : BasicDataType::None;
  std::string a;
  std::string b;
  converted(left, type, a);
  converted(right, type, b);
  out += plainOperation(expr, type, a, b);
}

void ExpressionWriter::numbers(const Expr& expr, BasicDataType type, std::string& out) {
  const ExprKind op = expr.kind;
  const ASTNode& left = *expr.leaf(0);
  const ASTNode& right = *expr.leaf(1);
  if (const auto value = isInteger(type) ? untypedNumber(expr) : std::nullopt) {
    appendInteger(*value, out);
    return;
  }
  const char* const name = cType(type);
  if (op == ExprKind::Power) {
    out += type == BasicDataType::Real ? "(f32)vel_pow(" : "vel_pow(";
    converted(left, BasicDataType::LReal, out);
    out += ", ";
    converted(right, BasicDataType::LReal, out);
    out += ')';
    return;
  }
  const bool divides = op == ExprKind::Divide || op == ExprKind::Modulo;
  if (divides && !isFloat(type)) {
    out += fmt::format("vel_{}_{}(", op == ExprKind::Divide ? "div" : "mod", name);
    converted(left, type, out);
    out += ", ";
    converted(right, type, out);
    out += ')';
    return;
  }
  // Sums and products wrap at the width of their type. C computes small types in int, which holds
  // every result except the product of two UINT.
  const bool plain = wrapsByItself(type);
  const bool widened =
      !plain && (!isSmall(type) || (type == BasicDataType::UInt && op == ExprKind::Multiply));
  const auto side = [&](const ASTNode& node) {
    if (widened) out += fmt::format("({})", wrappingType(type));
    converted(node, type, out);
  };
  if (!plain) out += fmt::format("({})(", name);
  side(left);
  out += fmt::format(" {} ", traitsOf(op).c);
  side(right);
  // Compilers warn of a division by the integer 0 also in floats.
  if (divides && out.compare(out.size() - 2, 2, " 0") == 0) out += ".0";
  if (!plain) out += ')';
}

void ExpressionWriter::pointers(const Expr& expr, const CommonType& common, std::string& out) {
  const auto number = [this](const ASTNode& node) {
    std::string text = typeOf(node) == BasicDataType::Pointer ? "(uintptr_t)" : "(uintptr_t)(i64)";
    operand(node, text);
    return text;
  };
  const std::string text =
      plainOperation(expr, BasicDataType::Pointer, number(*expr.leaf(0)), number(*expr.leaf(1)));
  switch (common.kind) {
    case CommonType::Kind::Step:
      out += fmt::format("({})({})", typeText(expr.dataType), text);
      break;
    case CommonType::Kind::Distance:
      out += fmt::format("(i32)({})", text);
      break;
    default:
      out += text;
      break;
  }
}

void ExpressionWriter::times(const Expr& expr, const CommonType& common, std::string& out) {
  using Kind = CommonType::Kind;
  const ExprKind op = expr.kind;
  const ASTNode& left = *expr.leaf(0);
  const ASTNode& right = *expr.leaf(1);
  const bool clock = common.operands == BasicDataType::TimeOfDay;
  std::string a;
  std::string b;
  operand(left, a);
  operand(right, b);
  switch (common.kind) {
    case Kind::Scale: {
      const bool durationLeft = isDuration(typeOf(left));
      const std::string& duration = durationLeft ? a : b;
      const std::string& number = durationLeft ? b : a;
      const bool real = isFloat(typeOf(durationLeft ? right : left));
      const char* const type = cType(common.operands);
      if (real) {
        out +=
            fmt::format("vel_truncate_{}((f64){} {} {})", type, duration, traitsOf(op).c, number);
      } else if (op == ExprKind::Divide) {
        out += fmt::format("({})vel_div_i64({}, (i64){})", type, duration, number);
      } else {
        out += fmt::format("({})((u64){} * (u64){})", type, duration, number);
      }
      break;
    }
    case Kind::Shift: {
      const bool nanoseconds = typeOf(right) == BasicDataType::LTime;
      const int unit = (nanoseconds ? 1000000 : 1) * (clock ? 1 : 1000);
      std::string duration = "(i64)" + b;
      // A function, since gcc warns of quotients of constants among which an operator selects.
      if (unit != 1) duration = fmt::format("vel_div_i64({}, {})", duration, unit);
      out += fmt::format("{}({}, {}{})", clock ? "vel_tod_shift" : "vel_dt_shift", a,
                         op == ExprKind::Subtract ? "-" : "", duration);
      break;
    }
    default:  // the difference of two points in time, in milliseconds
      out += fmt::format("(i32)(((i64){} - (i64){}) * {})", a, b, clock ? 1 : 1000);
      break;
  }
}

}  // namespace refhost
