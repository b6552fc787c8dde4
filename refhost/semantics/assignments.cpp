#include "core/conversion_message.h"
#include "host/ast_node_helper.h"
#include "refhost/semantics/arithmetic.h"
#include "refhost/semantics/parts.h"
#include "refhost/services/types.h"

namespace refhost {
namespace {

// Operators refuse a narrowing integer conversion; in an assignment it is only a warning.
bool narrows(int rated, BasicDataType target, BasicDataType source) {
  return rated == rating::kMismatch && isInteger(target) && isInteger(source);
}

// The standard allows 0 and 1 as BOOL literals.
bool isBoolConstant(const LiteralValue& literal) {
  return literal.form == LiteralForm::Integer && !literal.fixedType && !literal.negative &&
         literal.magnitude <= 1;
}

}  // namespace

void Assignments::check(const Type* to, const Type* from, const ASTNode& source,
                        vel::TextLocation at, const Call* call) {
  if (to == nullptr || from == nullptr || checkDerived(*to, *from, source, at)) return;
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
  if (call != nullptr && operatorHasReported(messages_.back(), *call)) messages_.pop_back();
}

// An operator reports on the assignment at an operand; its messages at the call itself concern
// only its own parameters.
bool Assignments::operatorHasReported(const vel::VELMessage& message, const Call& call) const {
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

}  // namespace refhost
