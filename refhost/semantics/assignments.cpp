#include "core/conversion_message.h"
#include "host/ast_node_helper.h"
#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/parts.h"
#include "refhost/services/types.h"

namespace refhost {
namespace {

// Of integers the host only warns where the operators refuse.
bool narrows(int rated, BasicDataType target, BasicDataType source) {
  return rated == rating::kMismatch && isInteger(target) && isInteger(source);
}

// The standard writes the constants of BOOL as 0 and 1, too.
bool isBoolConstant(const LiteralValue& literal) {
  return literal.form == LiteralForm::Integer && !literal.fixedType && !literal.negative &&
         literal.magnitude <= 1;
}

}  // namespace

void Assignments::judge(const Type* to, const Type* from, const ASTNode& source,
                        vel::TextLocation at, const Call* call) {
  if (to != nullptr && from == nullptr) judgeUntyped(*to, source, at);
  if (to == nullptr || from == nullptr || judgeDerived(*to, *from, source, at)) return;
  const Literal* const literal = literalOf(source);
  if (to->dataType() == BasicDataType::Bool && literal != nullptr &&
      isBoolConstant(literal->value)) {
    return;
  }
  const std::string literalText =
      literal != nullptr ? AstNodeHelper::astText(const_cast<ASTNode*>(&source)) : std::string();
  const int rated = rateConversion(to->dataType(), from->dataType(),
                                   literal != nullptr ? literalText.c_str() : nullptr);
  if (rated >= 0) return;
  const MessageFormat& format =
      narrows(rated, to->dataType(), from->dataType())
          ? message::kInformationLoss
          : vel::conversionMessage(rated, to->dataType(), from->dataType());
  if (&format == &message::kInformationLoss) {
    report(messages_, at, format,
           {AstNodeHelper::basicDataTypeText(from->dataType()),
            AstNodeHelper::basicDataTypeText(to->dataType())});
  } else if (&format == &message::kConstantTooLarge) {
    report(messages_, at, format, {literalText, displayName(from)});
  } else {
    report(messages_, at, format, {displayName(from), displayName(to)});
  }
  if (call != nullptr && hasBeenSaid(messages_.back(), *call)) messages_.pop_back();
}

// An operator speaks of an assignment at the parameter that it would assign; what it
// says at the call concerns its parameters only.
bool Assignments::hasBeenSaid(const vel::VELMessage& message, const Call& call) const {
  if (checked_.call != &call) return false;
  for (std::size_t i = checked_.first; i < checked_.last; ++i) {
    const vel::VELMessage& said = messages_[i];
    if (said.location.offset() != call.pos().offset() && said.code == message.code &&
        said.text == message.text) {
      return true;
    }
  }
  return false;
}

// Of a value without a type only this is known: a text goes to a text of its kind.
void Assignments::judgeUntyped(const Type& to, const ASTNode& source, vel::TextLocation at) {
  const BasicDataType given = likelyType(source);
  const bool text = isText(given) || isText(to.dataType());
  if (given == BasicDataType::None || given == to.dataType() || !text) return;
  report(messages_, at, message::kCannotConvert,
         {AstNodeHelper::basicDataTypeText(given), displayName(&to)});
}

}  // namespace refhost
