#include "operators/select/shift.h"

#include "core/checks.h"
#include "core/invocation.h"
#include "core/messages.h"
#include "operators/select/integer_parameters.h"

namespace vel {
namespace {

constexpr InvocationShape kTwoParameters{2, 2};

}  // namespace

bool ShiftOperator::check(InternalInterface* ii, ASTNode* invocation,
                          std::vector<VELMessage>& messages, std::string& resultType,
                          const std::string& pouName) {
  const ASTNode* list = checkShape(ii, invocation, kTwoParameters, messages);
  if (list == nullptr) return false;
  return checkShiftOperands(ii, invocation, *list, message::kNotShiftable,
                            effectivePouName(invocation, pouName), messages, resultType)
      .has_value();
}

std::string SHLOperator::staticCode(Generator* /*gen*/) {
  return "#define SHL(x, s) ((s) < 0 ? 0 : ((x) << (s)))";
}

std::string SHROperator::staticCode(Generator* /*gen*/) {
  return "#define SHR(x, s) ((s) < 0 ? 0 : ((x) >> (s)))";
}

}  // namespace vel
