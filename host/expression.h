// Expressions, invocations and literals.
#pragma once

#include <cstdint>
#include <string>

#include "host/ast.h"
#include "host/basic_data_type.h"
#include "host/export.h"

// A node of kind 63. Not an Invocation, and no Invocation is an Expression.
class VEL_HOST_API Expression : public vel::ASTNode {
 public:
  // Operators that the plugin tells apart; all other numbers are the host's own.
  enum Operator : std::int32_t {
    Constant = 0,  // leaf 0 is the ConstantValue
    Variable = 1,  // a variable or a direct address
    Typed = 20,    // carries its own type: access to a member, an element, a bit
  };

  ~Expression() override;

  Operator op() const;
  // The bit number of a bit access (`x.3`), negative for every other expression. The
  // plugin asks expressions of the operator Typed only.
  int bitAccessOffset() const;

  // The elementary type recorded on the node. The host records one on literals before
  // the check of the invocation that they stand in, on every other expression at the latest
  // before code is generated. MUX records those of its inputs.
  vel::BasicDataType basicType() const;
  void setBasicType(vel::BasicDataType type);

 protected:
  explicit Expression(Operator op);

 private:
  friend class vel::TreeBuilder;

  Operator op_;
  std::int32_t bitAccessOffset_ = -1;
  vel::BasicDataType basicType_ = vel::BasicDataType::None;
};

// A call: of an operator, a function or a function block's instance.
class VEL_HOST_API Invocation : public vel::ASTNode {
 public:
  ~Invocation() override;

  // The result type recorded on the node, see Expression::basicType.
  vel::BasicDataType basicType() const;
  void setBasicType(vel::BasicDataType type);

 protected:
  explicit Invocation(vel::ASTType type);

 private:
  vel::BasicDataType basicType_ = vel::BasicDataType::None;
};

namespace vel {

// The value of a literal, of which the plugin reads the type.
class VEL_HOST_API BasicData {
 public:
  explicit BasicData(BasicDataType type = BasicDataType::None);
  BasicDataType type() const;

 private:
  BasicDataType type_;
};

}  // namespace vel

// A literal: a node of kind 23.
class VEL_HOST_API ConstantValue : public vel::ASTNode {
 public:
  ~ConstantValue() override;

  vel::BasicData& basicData();
  // The name of the literal's type, e.g. "INT".
  std::string typeStr() const;
  // True when the source fixes the type (`INT#5`).
  bool isFixedType() const;

 protected:
  ConstantValue(vel::BasicDataType type, const char* typeName, bool fixedType);

 private:
  friend class vel::TreeBuilder;

  vel::BasicData basicData_;
  const char* typeName_;  // zero-terminated, lives as long as the tree
  bool fixedType_;
};
