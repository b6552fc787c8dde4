#include "core/emission.h"

#include "host/ast.h"

namespace vel {

GenClanAPI* clanApi(Generator* gen) { return dynamic_cast<GenClanAPI*>(gen); }

void genArgs(Generator* gen, ASTNode* parameterList, std::string& out) {
  GenClanAPI* api = clanApi(gen);
  const int count = parameterList != nullptr ? parameterList->leavesCount() : 0;
  for (int i = 0; i < count; ++i) {
    out += i == 0 ? "(" : ", (";
    out += api->expressionText(parameterList->leaf(i));
    out += ')';
  }
}

}  // namespace vel
