#include "host/ast_node_helper.h"
#include "refhost/semantics/analyser.h"
#include "refhost/semantics/arithmetic.h"
#include "refhost/services/types.h"

namespace refhost {
namespace {

struct Judgement {
  const MessageFormat* format = nullptr;  // null: nothing to say
  std::string first;
  std::string second;
};

// The rules of the operators' type check, but that narrowing an integer is only
// warned of.
Judgement judgeNumbers(int rated, const vel::SymbolDataType& to, const vel::SymbolDataType& from,
                       const ASTNode& source) {
  const BasicDataType target = to.dataType();
  const BasicDataType value = from.dataType();
  const bool narrows = rated == rating::kMismatch && isInteger(target) && isInteger(value);
  if (narrows || (target == BasicDataType::Real && value == BasicDataType::LReal)) {
    return {&message::kLossOfInformation, AstNodeHelper::basicDataTypeText(value),
            AstNodeHelper::basicDataTypeText(target)};
  }
  if (rated < rating::kMismatch) {
    return {&message::kConstantTooLarge, AstNodeHelper::astText(const_cast<ASTNode*>(&source)),
            displayName(&from)};
  }
  const MessageFormat* format = &message::kCannotConvert;
  if (rated == rating::kConverts) {
    if (isUnsigned(target) && !isUnsigned(value)) {
      format = &message::kToUnsigned;
    } else if (!isUnsigned(target) && isUnsigned(value)) {
      format = &message::kToSigned;
    } else if (isFloat(target) && isInteger(value)) {
      format = &message::kToFloat;
    } else {
      format = &message::kMayNotConvert;
    }
  }
  return {format, displayName(&from), displayName(&to)};
}

}  // namespace

void Analyser::judge(const Type* to, const Type* from, const ASTNode& source, std::size_t first) {
  if (to == nullptr || from == nullptr) return;
  const Literal* const literal = literalOf(source);
  const std::string literalText =
      literal != nullptr ? AstNodeHelper::astText(const_cast<ASTNode*>(&source)) : std::string();
  const int rated = rateConversion(to->dataType(), from->dataType(),
                                   literal != nullptr ? literalText.c_str() : nullptr);
  if (rated >= 0) return;
  const Judgement judgement = judgeNumbers(rated, *to, *from, source);
  const std::size_t before = messages_.size();
  say(source, *judgement.format, judgement.first, judgement.second);
  for (std::size_t i = first; i < before; ++i) {
    const vel::VELMessage& said = messages_[i];
    if (said.code == messages_[before].code && said.text == messages_[before].text) {
      messages_.resize(before);
      return;
    }
  }
}

}  // namespace refhost
