#include "core/emission.h"

#include <vector>

#include "core/invocation.h"
#include "host/ast_node_helper.h"
#include "host/call_tree.h"
#include "host/internal_interface.h"

namespace vel {

GenClanAPI* clanApi(Generator* gen) { return dynamic_cast<GenClanAPI*>(gen); }

std::string emptyCallText() {
  constexpr std::size_t kUsualLength = 255;
  std::string text;
  text.reserve(kUsualLength);
  return text;
}

void genArgs(Generator* gen, ASTNode* parameterList, std::string& out) {
  GenClanAPI* api = clanApi(gen);
  const int count = parameterList != nullptr ? parameterList->leavesCount() : 0;
  for (int i = 0; i < count; ++i) {
    out += i == 0 ? "(" : ", (";
    out += api->expressionText(parameterList->leaf(i));
    out += ')';
  }
}

std::string callText(Generator* gen, std::string_view function, ASTNode* parameterList) {
  std::string out = emptyCallText();
  out += function;
  out += '(';
  genArgs(gen, parameterList, out);
  out += ')';
  return out;
}

std::string memoryByteText(std::uint32_t offset) {
  std::string out = "((u8*)(_m + ";
  out += std::to_string(offset);
  out += "))";
  return out;
}

void recordFirmwareCall(Generator* gen, const std::string& callee) {
  CallTree* calls = gen->ii->callTree();
  if (calls != nullptr) calls->addFirmwareCaller(callee);
}

DataTypeInfo typeForText(Generator* gen, ASTNode* invocation, ASTNode* expression) {
  std::vector<VELMessage> discarded;
  return AstNodeHelper::dataType(gen->ii, expression, enclosingPouName(invocation), discarded);
}

}  // namespace vel
