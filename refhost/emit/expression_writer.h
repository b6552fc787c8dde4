// Expressions in one C function. This is also the generator that is passed to operators.
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

// Integer arithmetic that is written as a cast or as a call, so that it needs no parentheses.
bool isCastOrCall(const Expr& expr);

// True if an operand's C is no mere constant, variable or member, so that repeating it has a cost.
bool hasCompoundOperand(const Call& call);

// A complement, also as an XOR, that is written as a call: C complements the small types as an int,
// and gcc warns if the result is compared, even after a cast.
bool isComplementCall(const Expr& expr);

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
  // The text of an operand is in the form that its operator needs.
  std::string expressionText(vel::ASTNode* expression) override;
  // The literals of the generated C are valid as they are.
  std::string prepareConstant(const std::string& text, vel::BasicDataType) override { return text; }

  void append(const Expr& expr, std::string& out);
  // Like append(), in parentheses unless it is a primary expression.
  void operand(const vel::ASTNode& node, std::string& out);
  // An expression that stands between parentheses.
  std::string condition(const vel::ASTNode& node);
  // The operand converted to `type`.
  void converted(const vel::ASTNode& node, BasicDataType type, std::string& out);

  // The text that `write` returns for the operands, preceded by what it takes to evaluate them from
  // left to right, each once. `uses` tells how often the text evaluates an operand. Those operands
  // that are `places` are not read: they are the lvalues of in-out and output arguments.
  enum class Uses : std::uint8_t { Once, AtMostOnce, Repeated };
  std::string inOrder(const std::vector<const vel::ASTNode*>& operands, Uses uses,
                      const std::function<std::string()>& write,
                      const std::vector<const vel::ASTNode*>& places = {});

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
