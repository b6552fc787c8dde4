// The statements of one C function.
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

  // All of a list; null for none.
  void statements(const vel::ASTNode* list);

 private:
  void statement(const vel::ASTNode& node);
  void assignment(const vel::ASTNode& node);
  void ifStatement(const vel::ASTNode& node);
  void caseStatement(const vel::ASTNode& node);
  void forStatement(const vel::ASTNode& node);
  // Writes the loop and returns true when it is one between constants.
  bool countingLoop(const vel::ASTNode& node);
  // `head` with an opening brace, and the statements of `list`, without the closing one.
  void block(const std::string& head, const vel::ASTNode* list);

  // call_statements.cpp
  void callStatement(const Call& call);
  void instanceCall(const Call& call);
  // One that is found by a subscript or a pointer is looked up once.
  Place calledInstance(const Call& call);
  // What is written between the two is done only where EN of `call` is TRUE; then its ENO is
  // stored. The first returns EN as a C text, which the second is given.
  std::string beginEnabled(const Call& call);
  void endEnabled(const Call& call, const std::string& flag);

  FileContext& file_;
  FunctionBody& body_;
  ExpressionWriter& expressions_;
  PlaceWriter& places_;
  CallWriter& calls_;
};

}  // namespace refhost
