// Expressions in one C function. It is the generator that operators are handed.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/generator.h"
#include "refhost/emit/call_writer.h"
#include "refhost/emit/place_writer.h"
#include "refhost/emit/type_text.h"
#include "refhost/semantics/arithmetic.h"

namespace refhost {

class ExpressionWriter final : public vel::Generator {
 public:
  ExpressionWriter(FileContext& file, FunctionBody& body)
      : Generator(&file.services),
        places(file, body, *this),
        calls(file, body, places, *this),
        file_(file),
        body_(body) {}
  ExpressionWriter(const ExpressionWriter&) = delete;
  ExpressionWriter& operator=(const ExpressionWriter&) = delete;

  const char* optionText(const char* name) override;
  std::string typeText(vel::SymbolDataType* type) override {
    return refhost::typeText(file_.names, type);
  }
  std::string variableText(vel::SymbolVar* variable, int flag, const std::string& pouName) override;
  // Of a parameter, as the operator needs it.
  std::string expressionText(vel::ASTNode* expression) override;
  // Literals need no preparation in this host's C.
  std::string prepareConstant(const std::string& text, vel::BasicDataType) override { return text; }

  void append(const Expr& expr, std::string& out);
  // Like append(), in parentheses where an operator next to it needs them.
  void operand(const vel::ASTNode& node, std::string& out);
  // An operand taken to `type`.
  void converted(const vel::ASTNode& node, BasicDataType type, std::string& out);

  // What `write` makes of the operands, in C that evaluates them from left to right, each
  // once; `repeated` where the text may evaluate one again.
  std::string inOrder(const std::vector<const vel::ASTNode*>& operands, bool repeated,
                      const std::function<std::string()>& write);

  PlaceWriter places;
  CallWriter calls;

 private:
  void unary(const Expr& expr, std::string& out);
  void binary(const Expr& expr, std::string& out);
  void binaryPiece(const Expr& expr, std::string& out);
  void operation(const Expr& expr, std::string& out);
  void numbers(const Expr& expr, BasicDataType type, std::string& out);
  void times(const Expr& expr, const CommonType& common, std::string& out);
  void pointers(const Expr& expr, const CommonType& common, std::string& out);

  FileContext& file_;
  FunctionBody& body_;
};

}  // namespace refhost
