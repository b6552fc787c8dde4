#pragma once

#include <string>

#include "refhost/emit/expression_writer.h"

namespace refhost {

class StatementWriter {
 public:
  StatementWriter(FileContext& file, FunctionBody& body, ExpressionWriter& expressions)
      : file_(file),
        body_(body),
        expressions_(expressions),
        places_(expressions.places),
        calls_(expressions.calls) {}

  // `list` may be null.
  void statements(const vel::ASTNode* list);
  // Copies the inputs of `call` to `instance`, runs the body of `block`, a function block or a
  // PROGRAM with instances, and copies the outputs.
  void runInstance(const Call& call, const UnitSymbol& block, const Place& instance);

 private:
  void statement(const vel::ASTNode& node);
  void bind(const vel::ASTNode& node);
  void holdBefore(const Expr& place, const vel::ASTNode& source);
  void assignment(const vel::ASTNode& node);
  void ifStatement(const vel::ASTNode& node);
  void caseStatement(const vel::ASTNode& node);
  void forStatement(const vel::ASTNode& node);
  // Writes a loop with constant bounds; false, with nothing written, for any other loop.
  bool countingLoop(const vel::ASTNode& node);
  // Writes `head`, an opening brace and the statements of `list`, but no closing brace.
  void openBlock(const std::string& head, const vel::ASTNode* list);

  // call_statements.cpp
  void callStatement(const Call& call);
  void instanceCall(const Call& call);
  // Evaluates the subscripts and pointers of the instance once.
  Place calledInstance(const Call& call);
  // The statements written between these calls are executed if EN of `call` is TRUE; after them
  // ENO is stored. beginEnabled() returns EN as a C expression, which endEnabled() takes as `flag`.
  std::string beginEnabled(const Call& call);
  void endEnabled(const Call& call, const std::string& flag);

  FileContext& file_;
  FunctionBody& body_;
  ExpressionWriter& expressions_;
  PlaceWriter& places_;
  CallWriter& calls_;
};

}  // namespace refhost
