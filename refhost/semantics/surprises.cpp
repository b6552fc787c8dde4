// Calls that do what their pages say, which is not what most people expect.
#include <string>

#include "core/operator.h"
#include "refhost/semantics/constants.h"
#include "refhost/semantics/doubts.h"
#include "refhost/semantics/parts.h"

namespace refhost {

using vel::ASTNode;
using vel::TreeBuilder;

namespace {

// The number behind a time or date; null for other types.
const char* unitOf(BasicDataType type) {
  switch (type) {
    case BasicDataType::Time:
      return "milliseconds";
    case BasicDataType::LTime:
      return "nanoseconds";
    case BasicDataType::TimeOfDay:
      return "milliseconds since midnight";
    case BasicDataType::Date:
    case BasicDataType::DateAndTime:
      return "seconds since 1970-01-01";
    default:
      return nullptr;
  }
}

// True if the number of one is not that of the other, or says more than it.
bool differ(BasicDataType from, BasicDataType to) {
  const bool cut = from == BasicDataType::DateAndTime && to == BasicDataType::Date;
  const bool clock = (from == BasicDataType::Time && to == BasicDataType::TimeOfDay) ||
                     (from == BasicDataType::TimeOfDay && to == BasicDataType::Time);
  return cut || (!clock && std::string_view(unitOf(from)) != unitOf(to));
}

}  // namespace

void Doubts::surprise(const ASTNode& where, std::string_view what, std::string_view text) {
  doubt(where, message::kSurprise, what, text);
}

void Doubts::judgeConverting(const Call& call) {
  const auto& operand = static_cast<const Expr&>(*call.parameters()->leaf(0));
  const BasicDataType from = typeOf(operand);
  if (call.dataType == nullptr || operand.dataType == nullptr) return;
  if (convertsOutOfRange(call)) {
    doubt(operand, message::kNotHeld, displayName(call.dataType), TreeBuilder::source(operand));
  }
  if (isText(from) && call.dataType->dataType() == BasicDataType::Bool) {
    surprise(call, call.op()->name,
             "of a string is TRUE whatever its text says: STRING_TO_BOOL reads it");
  }
  judgeTimes(call, from, call.dataType->dataType());
  judgeConversion(operand, *operand.dataType, *call.dataType);
}

void Doubts::judgeTimes(const Call& call, BasicDataType from, BasicDataType to) {
  // These get a TIME in nanoseconds.
  const bool time = from == BasicDataType::Time;
  if (time && call.op()->name.rfind("LTIME_TO_", 0) == 0) from = BasicDataType::LTime;
  const char* const unit = unitOf(from);
  const char* const other = unitOf(to);
  const std::string& name = call.op()->name;
  if (unit != nullptr && other != nullptr) {
    if (from == BasicDataType::DateAndTime && to == BasicDataType::Date) {
      surprise(call, name, "keeps the time of day in the DATE");
    } else if (differ(from, to)) {
      surprise(call, name, std::string("takes ") + unit + " for " + other);
    }
  } else if (unit != nullptr && isNumber(to)) {
    surprise(call, name, std::string("gives ") + unit);
  } else if (other != nullptr && isNumber(from)) {
    const bool cuts = isFloat(from) && call.traits()->family == OperatorFamily::GenericConversion;
    surprise(
        call, name,
        std::string("takes the number for ") + other + (cuts ? " and drops its fraction" : ""));
  }
}

// Constant operands whose values are not taken as they are.
void Doubts::judgeOperands(const Call& call) {
  const ASTNode& list = *call.parameters();
  const OperatorTraits& traits = *call.traits();
  if (traits.family == OperatorFamily::Shift) {
    judgeShift(call.op()->name, list);
  } else if (traits.firstChoice == 1 && traits.has(OperatorTraits::kExtensible)) {
    judgeIndex(call.op()->name, list);
  } else if (traits.has(OperatorTraits::kCompares) && !traits.has(OperatorTraits::kExtensible)) {
    const auto lowest = constantInteger(*list.leaf(0));
    const auto highest = lowest ? constantInteger(*list.leaf(2)) : std::nullopt;
    if (!highest || *lowest <= *highest) return;
    surprise(call, call.op()->name, "gives MX whatever IN is, since MN is above it");
  }
}

void Doubts::judgeIndex(std::string_view name, const ASTNode& list) {
  const auto index = constantInteger(*list.leaf(0));
  if (!index || (*index >= 0 && *index < list.leavesCount() - 1)) return;
  surprise(*list.leaf(0), name,
           *index < 0 ? "takes its first value if K is negative"
                      : "takes its last value if K is beyond it");
}

void Doubts::judgeShift(std::string_view name, const ASTNode& list) {
  const ASTNode& shifted = *list.leaf(0);
  const Literal* const literal = literalOf(shifted);
  if (literal != nullptr && !literal->value.fixedType) {
    surprise(shifted, name, std::string("computes the constant as ") + literal->value.typeName);
  }
  const ElementaryType* const type = elementaryType(typeOf(shifted));
  const auto count = constantInteger(*list.leaf(1));
  if (!count || type == nullptr) return;
  if (*count < 0) surprise(*list.leaf(1), name, "by a negative number gives 0");
  if (*count >= 8 * type->size) {
    surprise(*list.leaf(1), name, "by the width of the value or more is undefined");
  }
}

void Doubts::judgeSharedState(const Call& call) {
  surprise(call, call.op()->name,
           "has the text of an earlier call here and shares its state: it sees no edge that the "
           "earlier one has seen");
}

}  // namespace refhost
