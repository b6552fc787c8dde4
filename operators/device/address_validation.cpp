#include "operators/device/address_validation.h"

#include <string>

#include "core/case_folding.h"
#include "core/messages.h"
#include "operators/device/address.h"

namespace vel {
namespace {

bool isWantedKind(const DirectAddressContext& context, int notation, const std::string& text) {
  switch (notation) {
    case kIecNotation:
      return equalIgnoringCase(iecKind(text, 2), context.isInput ? "IX" : "QX");
    case kLetterNotation:
      return equalIgnoringCase(addressParts(context.ii, text).device, context.isInput ? "X" : "Y");
    default:
      return true;
  }
}

}  // namespace

bool validateDirectAddress(DirectAddressContext& context, ASTNode* parameter, HeapAddress& address,
                           std::vector<VELMessage>& messages, bool rejectKind) {
  InternalInterface* ii = context.ii;
  const int notation = ii->addressNotation();
  const std::string text = AstNodeHelper::astText(parameter);
  if (!parseAddress(ii, text, address)) {
    if (!rejectKind) report(ii, messages, message::kAddressNotValid, parameter->pos(), text);
    return rejectKind;
  }
  if (isWantedKind(context, notation, text) == rejectKind) {
    report(ii, messages, message::kAddressNotSupported, parameter->pos(), text);
    return false;
  }
  if (rejectKind) return true;

  const LocalIoRange& range = context.isInput ? context.localIo.input : context.localIo.output;
  if (range.isConfigured() && !range.contains(rawAddress(ii, address))) {
    report(ii, messages, message::kAddressOverflow, parameter->pos(), text);
    ++context.acceptedMessages;
  }
  return true;
}

}  // namespace vel
