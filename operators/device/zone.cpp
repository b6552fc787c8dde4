#include "operators/device/zone.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "core/case_folding.h"
#include "core/checks.h"
#include "core/emission.h"
#include "core/invocation.h"
#include "core/messages.h"
#include "host/generator.h"
#include "operators/device/address.h"

namespace vel {
namespace {

constexpr InvocationShape kTwoParameters{2, 2, InvocationShape::NameForm::AsWritten,
                                         InvocationShape::ListFault::Abnormal};
constexpr std::string_view kSetZone = "ZSET";

struct Bound {
  ASTNode* node;
  std::string text;
  HeapAddress address;
};

bool isOneOf(std::string_view text, std::initializer_list<std::string_view> kinds) {
  return std::any_of(kinds.begin(), kinds.end(),
                     [text](std::string_view kind) { return equalIgnoringCase(text, kind); });
}

bool isWritable(InternalInterface* ii, const std::string& text, int notation) {
  switch (notation) {
    case kIecNotation:
      return isOneOf(iecKind(text, 1), {"Q", "M"});
    case kLetterNotation:
      return isOneOf(addressParts(ii, text).device, {"Y", "M", "S", "B", "D", "R", "W"});
    default:
      return true;
  }
}

// Checks that a zone may begin or end at `bound.node`, and sets the other members of `bound`.
bool checkBound(InternalInterface* ii, std::vector<VELMessage>& messages, int notation, bool sets,
                Bound& bound) {
  bound.text = AstNodeHelper::astText(bound.node);
  if (!parseAddress(ii, bound.text, bound.address)) {
    report(ii, messages, message::kAddressNotValid, bound.node->pos(), bound.text);
    return false;
  }
  const bool isBit = bound.address.isBitMode();
  // Words can be reset but not set in IEC notation.
  const bool settable = !sets || notation != kIecNotation || isBit || bound.address.unitSize == 1;
  if (isWritable(ii, bound.text, notation) && settable &&
      (isBit || addressParts(ii, bound.text).suffix.empty())) {
    return true;
  }
  report(ii, messages, message::kAddressNotSupported, bound.node->pos(), bound.text);
  return false;
}

// The contract has the host parse both bounds once more before they are compared.
bool parseAgain(InternalInterface* ii, Bound& bound) {
  bound.address = HeapAddress();
  return parseAddress(ii, bound.text, bound.address);
}

bool hasBitIndex(const HeapAddress& address) { return address.bitIndex != HeapAddress().bitIndex; }

}  // namespace

bool ZMemOperator::check(InternalInterface* ii, ASTNode* invocation,
                         std::vector<VELMessage>& messages, std::string& /*resultType*/,
                         const std::string& /*pouName*/) {
  const ASTNode* list = checkShape(ii, invocation, kTwoParameters, messages);
  if (list == nullptr) return false;

  const bool sets = equalIgnoringCase(operatorText(invocation), kSetZone);
  const int notation = ii->addressNotation();
  Bound start{list->leaf(0), {}, {}};
  Bound end{list->leaf(1), {}, {}};
  const bool startHolds = checkBound(ii, messages, notation, sets, start);
  const bool endHolds = checkBound(ii, messages, notation, sets, end);
  if (!startHolds || !endHolds) return false;
  const bool startParses = parseAgain(ii, start);
  const bool endParses = parseAgain(ii, end);
  if (!startParses || !endParses) return false;

  const bool sameDevice =
      notation != kLetterNotation ||
      equalIgnoringCase(addressParts(ii, start.text).device, addressParts(ii, end.text).device);
  if (!sameDevice || start.address.isBitMode() != end.address.isBitMode()) {
    report(ii, messages, message::kAddressMismatch, end.node->pos(), start.text, end.text);
    return false;
  }
  if (rawAddress(ii, start.address) <= rawAddress(ii, end.address)) return true;
  report(ii, messages, message::kAddressOrder, end.node->pos(), start.text, end.text);
  return false;
}

std::string ZMemOperator::generate(Generator* gen, ASTNode* invocation) {
  const auto written = nameToken(invocation);
  const ASTNode* list = argumentList(invocation, 2);
  if (!written || list == nullptr || list->leavesCount() < 2) return {};

  InternalInterface* ii = gen->ii;
  const HeapAddress start = addressOf(ii, list->leaf(0));
  const std::uint32_t first = rawAddress(ii, start);
  const HeapAddress end = addressOf(ii, list->leaf(1));
  const std::uint32_t last = rawAddress(ii, end);
  const bool endsInBit = hasBitIndex(end);
  if (!endsInBit && end.unitSize != 2 && ii->addressNotation() == kLetterNotation) return {};

  const std::uint32_t count = (endsInBit ? 1 : end.unitSize) + last - first;
  std::string out = emptyCallText();
  out += "mset(";
  out += std::to_string(first);
  out += ',';
  out += std::to_string(count);
  out += hasBitIndex(start) ? ",1," : ",0,";
  out += equalIgnoringCase(*written, kSetZone) ? "0xFF)" : "0)";
  return out;
}

}  // namespace vel
