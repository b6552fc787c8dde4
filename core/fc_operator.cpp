#include "core/fc_operator.h"

#include "core/emission.h"
#include "core/invocation.h"
#include "host/text.h"

namespace vel {

std::string FCOperator::generate(Generator* gen, ASTNode* invocation) {
  const auto written = nameToken(invocation);
  ASTNode* list = argumentList(invocation);
  if (!written || list == nullptr) return {};
  return callText(gen, stringToUpper(*written), list);
}

}  // namespace vel
