#include "operators/convert/conversion_check.h"

#include "core/invocation.h"
#include "core/messages.h"
#include "host/text.h"

namespace vel {

bool isText(BasicDataType type) {
  return type == BasicDataType::String || type == BasicDataType::WString;
}

ConversionCheck::ConversionCheck(InternalInterface* ii, ASTNode* invocation,
                                 std::vector<VELMessage>& messages)
    : ii_(ii),
      invocation_(invocation),
      messages_(messages),
      name_(stringToUpper(operatorText(invocation))) {}

bool ConversionCheck::hasArgument(const InvocationShape& shape, const std::string& pouName) {
  ASTNode* list = checkShape(ii_, invocation_, shape, messages_);
  if (list == nullptr) return false;
  scope_ = effectivePouName(invocation_, pouName);
  argument_ = list->leaf(0);
  argumentType_ = AstNodeHelper::dataType(ii_, argument_, scope_, messages_).type;
  return true;
}

std::string ConversionCheck::argumentText() const { return AstNodeHelper::astText(argument_); }

bool ConversionCheck::argumentIs(BasicDataType type) const {
  return type == argumentType_ && type != BasicDataType::None;
}

bool ConversionCheck::argumentConverts(BasicDataType target) {
  const int rating = AstNodeHelper::compareDataType(ii_, target, argumentType_, nullptr, scope_);
  if (rating == -1) {
    report(ii_, messages_, message::kInformationLoss, invocation_->pos(),
           AstNodeHelper::basicDataTypeText(argumentType_),
           AstNodeHelper::basicDataTypeText(target));
  }
  return rating != -2;
}

bool ConversionCheck::mismatch(const std::string& what) {
  report(ii_, messages_, message::kTypeMismatch, invocation_->pos(), name_, what,
         AstNodeHelper::basicDataTypeText(argumentType_));
  return false;
}

bool ConversionCheck::cannotConvert(std::string_view wanted) {
  report(ii_, messages_, message::kCannotConvert, invocation_->pos(), argumentText(),
         std::string(wanted));
  return false;
}

}  // namespace vel
