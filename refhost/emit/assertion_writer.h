// Writes the statements that only unit tests have: assertions, and the passing of time.
#pragma once

#include <string>
#include <vector>

#include "refhost/emit/expression_writer.h"

namespace refhost {

class AssertionWriter {
 public:
  AssertionWriter(FileContext& file, FunctionBody& body, ExpressionWriter& expressions)
      : file_(file), body_(body), expressions_(expressions) {}

  // Writes the call of a function of tests.
  void write(const Call& call);

 private:
  std::string hold(const Expr& operand, const vel::SymbolDataType* type);
  // The C condition under which the assertion fails.
  std::string failure(const Call& call, std::size_t number, const std::vector<std::string>& values);
  std::string nearness(const Call& call, const std::vector<std::string>& values);
  std::string converted(const vel::ASTNode& node, BasicDataType type);

  FileContext& file_;
  FunctionBody& body_;
  ExpressionWriter& expressions_;
};

}  // namespace refhost
