// The blocks of the language by the kinds of their tokens.
#pragma once

#include <string_view>

namespace refhost {

struct BlockRule {
  int opener;
  int closer;
  int headerEnd;  // 0: none
  const char* closerName;
  const char* headerEndName;
};

// All blocks of variables have VAR as their opener.
const BlockRule& ruleOf(int opener);
int openerOf(int closer);
// Of the block that END_`name` closes; 0 for none.
int openerOf(std::string_view name);

bool opensUnit(int kind);
bool closesUnit(int kind);
bool opensVariables(int kind);
// The token is part of the block structure or ends a statement.
bool isStructural(int kind);
// A type or an initial value can end with the token.
bool endsDeclaration(int kind);

}  // namespace refhost
