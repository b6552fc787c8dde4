#include "operators/convert/bcd.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "core/case_folding.h"
#include "core/checks.h"
#include "operators/convert/conversion_check.h"
#include "operators/convert/conversion_name.h"

namespace vel {
namespace {

// The argument types accepted by conversions whose name has `named` on the side that is not BCD.
struct Rule {
  std::string_view named;
  std::string_view resultType;
  std::array<BasicDataType, 4> accepted;  // none of them None
  std::string_view wanted;                // the type that the message names
};
using Rules = std::array<Rule, 4>;

// Not "BYTE" as in kToBcd: messages are part of the contract, down to this spelling.
constexpr Rules kFromBcd = {{
    {"INT", "INT", {{BasicDataType::USInt}}, "Byte"},
    {"BYTE", "BYTE", {{BasicDataType::USInt}}, "Byte"},
    {"WORD", "WORD", {{BasicDataType::UInt}}, "WORD"},
    {"DWORD", "DWORD", {{BasicDataType::UDInt}}, "DWORD"},
}};
constexpr Rules kToBcd = {{
    {"INT",
     "BYTE",
     {{BasicDataType::SInt, BasicDataType::Int, BasicDataType::USInt, BasicDataType::UInt}},
     "BYTE"},
    {"BYTE", "BYTE", {{BasicDataType::USInt}}, "BYTE"},
    {"WORD", "WORD", {{BasicDataType::UInt}}, "WORD"},
    {"DWORD", "DWORD", {{BasicDataType::UDInt}}, "DWORD"},
}};

// `side` is the type in the operator's name that is not BCD.
bool checkBcd(InternalInterface* ii, ASTNode* invocation, std::vector<VELMessage>& messages,
              std::string& resultType, const std::string& pouName,
              std::string_view ConversionEnds::*side, const Rules& rules) {
  if (isEmpty(invocation)) return false;
  if (!checkParams(ii, invocation, messages)) return false;

  ConversionCheck conversion(ii, invocation, messages);
  const ConversionEnds ends(conversion.name());
  resultType = ends.*side;
  if (!conversion.hasArgument(ConversionCheck::kStringShape, pouName)) return false;

  const auto* rule = std::find_if(rules.begin(), rules.end(), [&](const Rule& each) {
    return equalIgnoringCase(resultType, each.named);
  });
  if (rule == rules.end()) return true;
  resultType = rule->resultType;
  const bool accepted =
      std::any_of(rule->accepted.begin(), rule->accepted.end(),
                  [&](BasicDataType type) { return conversion.argumentIs(type); });
  return accepted || conversion.cannotConvert(rule->wanted);
}

}  // namespace

bool BCDToOperator::check(InternalInterface* ii, ASTNode* invocation,
                          std::vector<VELMessage>& messages, std::string& resultType,
                          const std::string& pouName) {
  return checkBcd(ii, invocation, messages, resultType, pouName, &ConversionEnds::target, kFromBcd);
}

bool ToBCDOperator::check(InternalInterface* ii, ASTNode* invocation,
                          std::vector<VELMessage>& messages, std::string& resultType,
                          const std::string& pouName) {
  return checkBcd(ii, invocation, messages, resultType, pouName, &ConversionEnds::source, kToBcd);
}

}  // namespace vel
