// The blocks of the language by the kinds of their tokens.
#pragma once

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

bool opensUnit(int kind);
bool closesUnit(int kind);
bool opensVariables(int kind);
// The token is part of the block structure or ends a statement.
bool isStructural(int kind);

}  // namespace refhost
