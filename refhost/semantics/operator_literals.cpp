// The types of untyped literals as operands of operators.
#include <algorithm>
#include <vector>

#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/constants.h"
#include "refhost/semantics/parts.h"

namespace refhost {

using vel::ASTNode;

namespace {

// True if the type holds the value of an untyped literal, REAL and LREAL roundly.
bool fitsLiteral(const LiteralValue& literal, BasicDataType type) {
  if (isFloat(type)) return widens(literal.type, type) || literal.form == LiteralForm::Integer;
  return literal.form == LiteralForm::Integer &&
         integerFits(literal.negative, literal.magnitude, type);
}

}  // namespace

// An untyped number whose absolute value is not in its type has the next larger one.
void Calls::widenLowest(Expr& number) {
  const auto value = untypedNumber(number);
  if (!value || fits(-Integer{*value}, typeOf(number))) return;
  for (const BasicDataType type : {BasicDataType::Int, BasicDataType::DInt, BasicDataType::LInt}) {
    if (!fits(-Integer{*value}, type)) continue;
    number.dataType = services_.symbols.elementary(type);
    number.setBasicType(type);
    return;
  }
}

// The untyped literals among the values that an operator passes on have the smallest type of the
// other values that holds them. If there are no others they have the type that is wanted, or else
// their common type. An input IN among several has the type of the result: the others have it too,
// if they can, and as a literal it has the largest type.
void Calls::adaptLiterals(const Call& call, const ASTNode& list, const Type* wanted) {
  const OperatorTraits& traits = *call.traits();
  std::vector<Expr*> literals;
  std::vector<BasicDataType> types;
  types.reserve(static_cast<std::size_t>(list.leavesCount()) + 1);
  BasicDataType common = BasicDataType::None;
  const Expr* result = nullptr;
  for (int i = traits.firstChoice; i < list.leavesCount(); ++i) {
    auto& choice = static_cast<Expr&>(*list.leaf(i));
    const BasicDataType type = typeOf(choice);
    if (!isNumber(type) && !traits.has(OperatorTraits::kCompares)) return;
    if (!isNumber(type)) continue;
    if (i > 0 && i == traits.position("IN")) result = &choice;
    const Literal* const literal = literalOf(choice);
    if (literal == nullptr || literal->value.fixedType) {
      types.push_back(type);
    } else {
      literals.push_back(&choice);
      common = common == BasicDataType::None ? type : commonNumber(common, type);
    }
  }
  if (literals.empty()) return;
  const auto holds = [](const Expr& choice) {
    return [&value = literalOf(choice)->value](BasicDataType type) {
      return isNumber(type) && fitsLiteral(value, type);
    };
  };
  if (types.empty()) {
    const BasicDataType type = valueType(wanted);
    // Integers stay integers, as in the host's own arithmetic.
    const bool suits = isFloat(type) == isFloat(common) &&
                       std::all_of(literals.begin(), literals.end(),
                                   [&](const Expr* choice) { return holds(*choice)(type); });
    types.push_back(suits ? type : common);
  }
  std::sort(types.begin(), types.end());
  const BasicDataType largest = types.back();
  if (result != nullptr && literalOf(*result) == nullptr)
    types.insert(types.begin(), typeOf(*result));
  for (Expr* const choice : literals) {
    if (choice == result) types.insert(types.begin(), largest);
    const auto type = std::find_if(types.begin(), types.end(), holds(*choice));
    if (type == types.end()) continue;
    choice->dataType = services_.symbols.elementary(*type);
    choice->setBasicType(*type);
  }
}

}  // namespace refhost
