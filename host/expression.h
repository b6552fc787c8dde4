// Expressions, invocations and literals.
#pragma once

#include <cstdint>
#include <string>

#include "host/ast.h"
#include "host/basic_data_type.h"
#include "host/export.h"

// A node of kind 63. An Invocation is not an Expression.
class VEL_HOST_API Expression : public vel::ASTNode {
 public:
  // Operators that the plugin distinguishes. The host is free to use all other numbers.
  enum Operator : std::int32_t {
    Constant = 0,  // leaf 0 is the ConstantValue
    Variable = 1,  // a variable or a direct address
    Typed = 20,    // access to a member, an element or a bit
  };

  ~Expression() override;

  Operator op() const;
  // The bit number of a bit access (`x.3`), negative for every other expression. The
  // plugin reads it only where op() is Typed.
  int bitAccessOffset() const;

  // The elementary type recorded on the node. The host records it on a literal before it
  // checks the invocation that contains the literal, and on every other expression before it
  // generates code. MUX records the types of its inputs itself.
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

// A call of an operator, a function or an instance of a function block.
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

// The value of a literal. The plugin reads its type only.
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
