#include "operators/device/direct_io.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

#include "core/case_folding.h"
#include "core/checks.h"
#include "core/emission.h"
#include "core/invocation.h"
#include "core/messages.h"
#include "host/expression.h"
#include "operators/device/address.h"
#include "operators/device/address_validation.h"

namespace vel {
namespace {

constexpr std::string_view kReadBit = "IRDBIT";
constexpr std::string_view kReadDirect = "_READIDIRECT";
constexpr std::string_view kSetZone = "IZSET";
constexpr std::string_view kResetZone = "IZRST";

constexpr InvocationShape parameters(int count) {
  return {count, count, InvocationShape::NameForm::UpperCase, InvocationShape::ListFault::Abnormal,
          InvocationShape::Leaves::NameAndList};
}

// Checks that the operand that receives an input bit is writable and is not itself an input bit.
bool checkDestination(DirectAddressContext& context, ASTNode* invocation, ASTNode* destination,
                      std::vector<VELMessage>& messages, const std::string& scope) {
  const auto* expression = dynamic_cast<const Expression*>(destination);
  if (expression == nullptr) return true;
  const std::string text = AstNodeHelper::astText(destination);
  if (expression->op() != Expression::Variable && expression->op() != Expression::Typed) {
    report(context.ii, messages, message::kNotAssignable, destination->pos(), text);
    return false;
  }
  HeapAddress unused;
  return AstNodeHelper::checkAstWritable(context.ii, invocation, text, scope, messages, false,
                                         false) &&
         validateDirectAddress(context, destination, unused, messages, true);
}

// Removes the first occurrence of `word`; false when there is none.
bool removeFirst(std::string& text, std::string_view word) {
  const std::size_t at = text.find(word);
  if (at == std::string::npos) return false;
  text.erase(at, word.size());
  return true;
}

// Trims blanks once, then removes every outer pair of parentheses.
std::string_view withoutParentheses(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n\v\f";
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  text.remove_suffix(text.size() - (text.find_last_not_of(kBlanks) + 1));
  while (!text.empty() && text.front() == '(' && text.back() == ')') {
    text = text.substr(1, text.size() - 2);
  }
  return text;
}

// `destination` is C that reads the destination (`gbit(...)`) and is turned into a write here.
std::string readBitText(std::string destination, const std::string& place) {
  std::string_view setter;
  std::string_view bit = destination;
  if (removeFirst(destination, "vgbit")) {
    setter = "vsbit(";
    bit = withoutParentheses(destination);
  } else if (removeFirst(destination, "gbit")) {
    setter = "sbit(";
    bit = destination;
  }
  std::string out = emptyCallText();
  out += setter;
  out += bit;
  out += setter.empty() ? " = _READIDIRECT(" : ", _READIDIRECT(";
  out += place;
  out += setter.empty() ? ")" : "))";
  return out;
}

std::string zoneText(Generator* gen, std::uint32_t first, std::uint32_t last,
                     std::string_view fill) {
  const std::uint32_t count = last - first + 1;
  std::string out = emptyCallText();
  out += "mset(";
  out += std::to_string(first);
  out += ',';
  out += std::to_string(count);
  out += ", 1, ";
  out += fill;
  out += ')';

  LocalIoBounds bounds;
  bounds.outStart = bounds.outEnd = "0";
  readLocalIoRanges(localIoOption(gen), bounds);
  const auto start = static_cast<std::uint32_t>(leadingNumber(bounds.outStart));
  const auto end = static_cast<std::uint32_t>(leadingNumber(bounds.outEnd));
  if (start <= first && first < end) {
    out += ";\r\n__platform_api.UPDATEOUTPUT( ";
    out += std::to_string(first - start);
    out += ", ";
    out += std::to_string(std::min(end - first, count));
    out += ')';
  }
  return out;
}

// Appends the C statement that refreshes `addr` when it is in the local range. `call` is the C
// text from the condition's ")" up to the offset of the bit within the range.
void addRefresh(std::string& out, std::string_view start, std::string_view end,
                std::string_view call) {
  out += "  if(";
  out += start;
  out += "<= addr && addr <";
  out += end;
  out += call;
  out += start;
  out += ", 1);\n";
}

}  // namespace

std::string DirectIOOperator::staticCode(Generator* gen) {
  LocalIoBounds bounds;
  if (!readLocalIoRanges(localIoOption(gen), bounds)) {
    return "#define _READIDIRECT gbit\r\n#define _WRITEODIRECT sbit\r\n";
  }
  if (bounds.inStart.empty() || bounds.inEnd.empty() || bounds.outStart.empty() ||
      bounds.outEnd.empty()) {
    return {};
  }
  constexpr std::size_t kUsualLength = 400;
  std::string out;
  out.reserve(kUsualLength);
  out += "u8 _READIDIRECT(u32 addr) {\n";
  addRefresh(out, bounds.inStart, bounds.inEnd, ")\n    __platform_api.UPDATEINPUT( addr - ");
  out +=
      "  return gbit(addr);\n}\n"
      "void _WRITEODIRECT(u32 addr, u8 d) {\n  sbit(addr,d);\n";
  addRefresh(out, bounds.outStart, bounds.outEnd, ")\n    __platform_api.UPDATEOUTPUT( addr - ");
  out += "}\n";
  return out;
}

bool DirectIOOperator::check(InternalInterface* ii, ASTNode* invocation,
                             std::vector<VELMessage>& messages, std::string& resultType,
                             const std::string& pouName) {
  if (invocation == nullptr) return false;
  const std::string written = operatorText(invocation);
  const bool yieldsBit = equalIgnoringCase(written, kReadDirect);
  resultType = yieldsBit ? "BOOL" : "INVALID";
  ASTNode* list = checkShape(ii, invocation, parameters(yieldsBit ? 1 : 2), messages);
  if (list == nullptr) return false;

  const bool readsBit = equalIgnoringCase(written, kReadBit);
  DirectAddressContext context{yieldsBit || readsBit, ii, projectLocalIo(ii), messages.size()};
  ASTNode* first = list->leaf(0);
  HeapAddress firstAddress;
  validateDirectAddress(context, first, firstAddress, messages, false);
  if (yieldsBit) return messages.size() == context.acceptedMessages;

  ASTNode* second = list->leaf(1);
  if (equalIgnoringCase(written, kSetZone) || equalIgnoringCase(written, kResetZone)) {
    HeapAddress lastAddress;
    validateDirectAddress(context, second, lastAddress, messages, false);
    // An invalid address, which was reported above, is compared as the highest position.
    if (lastAddress.position < firstAddress.position) {
      report(ii, messages, message::kAddressOrder, second->pos(), AstNodeHelper::astText(first),
             AstNodeHelper::astText(second));
    }
  } else {
    const std::string scope = effectivePouName(invocation, pouName);
    if (readsBit && !checkDestination(context, invocation, second, messages, scope)) return false;
    if (AstNodeHelper::dataType(ii, second, scope, messages).type != BasicDataType::Bool) {
      report(ii, messages, message::kNotAllowed, second->pos(), AstNodeHelper::astText(second),
             scope);
    }
  }
  return messages.size() == context.acceptedMessages;
}

std::string DirectIOOperator::generate(Generator* gen, ASTNode* invocation) {
  const auto token = nameToken(invocation);
  const ASTNode* list = argumentList(invocation, 2);
  const int count = list != nullptr ? list->leavesCount() : 0;
  if (!token || count == 0) return {};

  const std::string& written = *token;
  const std::uint32_t address = rawAddress(gen->ii, addressOf(gen->ii, list->leaf(0)));
  std::string value = count == 2 ? clanApi(gen)->expressionText(list->leaf(1)) : std::string();
  if (written == kSetZone || written == kResetZone) {
    if (count < 2) return {};
    const std::uint32_t last = rawAddress(gen->ii, addressOf(gen->ii, list->leaf(1)));
    return zoneText(gen, address, last, written == kSetZone ? "0xFF" : "0");
  }
  const std::string place = std::to_string(address);
  if (written == kReadBit) return readBitText(std::move(value), place);
  if (written == kReadDirect) return "_READIDIRECT(" + place + ")";
  std::string out = emptyCallText();
  out += "_WRITEODIRECT(";
  out += place;
  out += ", ";
  out += value;
  out += ')';
  return out;
}

}  // namespace vel
