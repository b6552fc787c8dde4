#pragma once

#include <optional>
#include <vector>

#include "refhost/semantics/part.h"

namespace refhost {

class Statements : public Part {
 public:
  using Part::Part;

  // `list` is null for a body without statements.
  void analyseStatements(ASTNode* list);

 private:
  // The range of a CASE label. The values of a signed selector are mapped to unsigned ones that
  // have the same order.
  struct Label {
    Integer low;
    Integer high;
    const ASTNode* node;
  };

  void analyseUnreachable(ASTNode& list, int from, const ASTNode& jump);
  // True of a statement that leaves its list.
  bool analyseStatement(ASTNode& statement);
  // `checks` is false if the target is known not to take the value.
  void analyseAssignment(ASTNode& statement, bool checks = true);
  void analyseBinding(ASTNode& statement);
  void analyseIf(ASTNode& statement);
  void analyseCase(ASTNode& statement);
  void analyseLabels(ASTNode& labels, const Expr& selector, std::vector<Label>& found);
  std::optional<Integer> labelValue(ASTNode& parent, int index, const Expr& selector);
  void warnOfRepeated(std::vector<Label>& labels);
  void analyseFor(ASTNode& statement);
  void analyseCondition(ASTNode& parent, int index);

  int loops_ = 0;  // that enclose the statement being analysed
};

}  // namespace refhost
