#include <utility>

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

// False of the variable that takes an output, and of what must be constant or a global variable.
bool canBeConverted(const ASTNode& source) {
  const ASTNode* const argument = source.parent();
  if (argument == nullptr || kindOf(*argument) != NodeKind::Argument) return true;
  if (static_cast<const Argument*>(argument)->output) return false;
  const ASTNode* item = argument->parent();
  for (int levels = 0; item != nullptr && levels < 2; ++levels) item = item->parent();
  return item == nullptr ||
         (kindOf(*item) != NodeKind::Task && kindOf(*item) != NodeKind::ProgramInstance);
}

}  // namespace

void Assignments::check(const Type* to, const Type* from, const ASTNode& source,
                        const SourceRange& at, const Call* call) {
  if (to == nullptr || from == nullptr || checkDerived(*to, *from, source, at)) return;
  const Literal* const literal = literalOf(source);
  const std::string literalText =
      literal != nullptr ? AstNodeHelper::astText(const_cast<ASTNode*>(&source)) : std::string();
  const int rated = rateConversion(to->dataType(), from->dataType(),
                                   literal != nullptr ? literalText.c_str() : nullptr);
  if (rated >= 0) return parts_.doubts.judgeConversion(source, *from, *to);
  const MessageFormat& format =
      narrows(rated, to->dataType(), from->dataType())
          ? message::kInformationLoss
          : vel::conversionMessage(rated, to->dataType(), from->dataType());
  std::string first = describe(source, from);
  std::string second = displayName(to);
  const bool loses = &format == &message::kInformationLoss;
  if (loses) first = displayName(from);
  if (&format == &message::kConstantTooLarge) {
    first = literalText;
    second = displayName(from);
  }
  if (call != nullptr) {
    // An operator names the elementary types here.
    const auto said = [&](const std::string& name, const Type& type) {
      return loses ? AstNodeHelper::basicDataTypeText(type.dataType()) : name;
    };
    const std::string text = filledIn(format, {said(first, *from), said(second, *to)});
    if (operatorHasReported(format, text, *call)) return;
  }
  Remarks& said = messages_.report(at, format, {first, second});
  if (literal != nullptr || &format != &message::kCannotConvert) return;
  if (!canBeConverted(source)) return;
  const std::string conversion = first + "_TO_" + second;
  if (services_.operators != nullptr && services_.operators->findOperator(conversion) != nullptr) {
    said.note(at, conversion + " converts it");
  }
}

bool Assignments::accepts(const Type* to, const Expr& source) {
  const std::size_t first = messages_.count();
  check(to, source.dataType, source);
  const bool accepted = !hasErrorFrom(first);
  messages_.drop(first);
  return accepted;
}

// An operator reports on the assignment at an operand; its messages at the call itself concern
// only its own parameters.
bool Assignments::operatorHasReported(const MessageFormat& format, std::string_view text,
                                      const Call& call) const {
  if (checked_.call != &call) return false;
  for (std::size_t i = checked_.first; i < checked_.last; ++i) {
    const vel::VELMessage& said = messages_.records()[i];
    if (said.location.offset() != call.pos().offset() && said.code == format.code &&
        said.text == text) {
      return true;
    }
  }
  return false;
}

}  // namespace refhost
