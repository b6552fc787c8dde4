#include "operators/select/min_max.h"

#include "core/checks.h"
#include "core/invocation.h"
#include "host/ast_node_helper.h"

namespace vel {
namespace {

constexpr InvocationShape kTwoParameters{2, 2};

struct Operand {
  ASTNode* node;
  DataTypeInfo info;

  BasicDataType type() const { return info.type; }
  std::string typeText() const { return AstNodeHelper::basicDataTypeText(info.type); }
  bool isFloat() const { return AstNodeHelper::isFloatType(info.type); }
  bool isInteger() const { return AstNodeHelper::isIntegerType(info.type); }
  bool isUnsigned() const { return AstNodeHelper::isUIntegerType(info.type); }
};

// The type rules for an invocation whose shape is correct.
class MinMaxCheck {
 public:
  MinMaxCheck(InternalInterface* ii, std::vector<VELMessage>& messages, std::string& resultType,
              const std::string& scope)
      : ii_(ii), messages_(messages), resultType_(resultType), scope_(scope) {}

  Operand operand(ASTNode* node) {
    return {node, AstNodeHelper::dataType(ii_, node, scope_, messages_)};
  }

  // The result has the type of `winner`, to which `other` must be assignable.
  bool convert(const Operand& other, const Operand& winner) {
    resultType_ = winner.typeText();
    return assignable(other, winner);
  }

  bool assignable(const Operand& source, const Operand& target) {
    // textOf(), because the target of an assignment may be missing in a faulty program.
    return assignable(source, textOf(target.node), target.type());
  }

  // The result has the integer type to which the host promotes `unsignedOperand`.
  bool promote(const Operand& unsignedOperand) {
    const BasicDataType promoted = AstNodeHelper::tranIntegerBasicType(unsignedOperand.type());
    resultType_ = AstNodeHelper::basicDataTypeText(promoted);
    return assignable(unsignedOperand, resultType_, promoted);
  }

  bool sameSize(const Operand& a, const Operand& b) {
    resultType_ = a.typeText();
    if (a.isUnsigned()) {
      if (!promote(a)) return false;
    } else if (!a.isInteger() && !assignable(a, b)) {
      return false;
    }
    if (b.isUnsigned()) return promote(b);
    return b.isInteger() || assignable(b, a);
  }

 private:
  bool assignable(const Operand& source, const std::string& targetText, BasicDataType target) {
    return checkAssignType(ii_, source.node, targetText, target,
                           AstNodeHelper::astText(source.node), source.type(), scope_, messages_);
  }

  InternalInterface* ii_;
  std::vector<VELMessage>& messages_;
  std::string& resultType_;
  const std::string& scope_;
};

}  // namespace

bool MinMaxOperator::check(InternalInterface* ii, ASTNode* invocation,
                           std::vector<VELMessage>& messages, std::string& resultType,
                           const std::string& pouName) {
  ASTNode* list = checkShape(ii, invocation, kTwoParameters, messages);
  if (list == nullptr) return false;

  const std::string scope = effectivePouName(invocation, pouName);
  MinMaxCheck types(ii, messages, resultType, scope);
  const Operand a = types.operand(list->leaf(0));
  const Operand b = types.operand(list->leaf(1));
  if (a.type() == BasicDataType::None || b.type() == BasicDataType::None) {
    resultType = a.type() == BasicDataType::None ? a.typeText() : b.typeText();
    return false;
  }
  const int sizeA = AstNodeHelper::getBasicDataTypeSize(ii, a.type());
  const int sizeB = AstNodeHelper::getBasicDataTypeSize(ii, b.type());
  const bool sameType = a.type() == b.type();

  if (isAssigned(*invocation)) {
    const Operand target = types.operand(invocation->parent()->leaf(0));
    if (sameType) return types.convert(a, target);
  }

  if (a.isFloat() || b.isFloat()) {
    if (sameType) {
      resultType = a.info.name;
      return true;
    }
    if (!b.isFloat()) return types.convert(b, a);
    if (!a.isFloat()) return types.convert(a, b);
    resultType = sizeA > sizeB ? a.typeText() : b.typeText();
    return true;
  }
  if (a.isInteger() || b.isInteger()) {
    if (sameType) {
      resultType = a.info.name;
      return true;
    }
    if (sizeA > sizeB) return a.isUnsigned() ? types.promote(a) : types.convert(b, a);
    if (sizeA < sizeB) return b.isUnsigned() ? types.promote(b) : types.convert(a, b);
    return types.sameSize(a, b);
  }
  return types.convert(b, a);
}

std::string MinOperator::staticCode(Generator* /*gen*/) {
  return "#define MIN(x, y) ((x) < (y) ? (x) : (y))";
}

std::string MaxOperator::staticCode(Generator* /*gen*/) {
  return "#define MAX(x, y) ((x) > (y) ? (x) : (y))";
}

}  // namespace vel
