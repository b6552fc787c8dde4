// Operations of nodes.
#include "host/ast.h"
#include "host/declaration.h"
#include "host/expression.h"
#include "hostkit/strict.h"

namespace vel {

ASTNode::ASTNode(ASTType type) : type_(type), length_(0), isUnit_(0) {}
ASTNode::~ASTNode() = default;
ASTType ASTNode::type() const { return type_; }
int ASTNode::leavesCount() const { return leavesCount_; }
ASTNode* ASTNode::leaf(int i) const {
  const bool isThere = i >= 0 && i < leavesCount_;
  hostkit::require(isThere);
  return isThere ? leaves_[i] : nullptr;
}
ASTNode* ASTNode::parent() const { return parent_; }
TextLocation ASTNode::pos() const { return pos_; }

ASTNode* ASTNode::getPouAST(ASTNode* node) {
  while (node != nullptr && node->isUnit_ == 0) node = node->parent_;
  return node;
}

ASTText::ASTText(ASTType type, const char* text) : ASTNode(type), text_(text) {}
ASTText::~ASTText() = default;
const char* ASTText::text() const { return text_; }

BasicData::BasicData(BasicDataType type) : type_(type) {}
BasicDataType BasicData::type() const { return type_; }

}  // namespace vel

Expression::Expression(Operator op) : ASTNode(vel::ASTType::Expression), op_(op) {}
Expression::~Expression() = default;
Expression::Operator Expression::op() const { return op_; }
int Expression::bitAccessOffset() const { return bitAccessOffset_; }
vel::BasicDataType Expression::basicType() const { return basicType_; }
void Expression::setBasicType(vel::BasicDataType type) { basicType_ = type; }

Invocation::Invocation(vel::ASTType type) : ASTNode(type) {}
Invocation::~Invocation() = default;
vel::BasicDataType Invocation::basicType() const { return basicType_; }
void Invocation::setBasicType(vel::BasicDataType type) { basicType_ = type; }

ConstantValue::ConstantValue(vel::BasicDataType type, const char* typeName, bool fixedType)
    : ASTNode(vel::ASTType::ConstantValue),
      basicData_(type),
      typeName_(typeName),
      fixedType_(fixedType) {}
ConstantValue::~ConstantValue() = default;
vel::BasicData& ConstantValue::basicData() { return basicData_; }
std::string ConstantValue::typeStr() const { return typeName_; }
bool ConstantValue::isFixedType() const { return fixedType_; }

POUDeclaration::POUDeclaration(vel::ASTType nodeKind, const char* name, vel::POUType type)
    : ASTNode(nodeKind), kind(static_cast<int>(type)), name_(name), type_(type) {
  isUnit_ = 1;
}
POUDeclaration::~POUDeclaration() = default;
const char* POUDeclaration::name() const { return name_; }
vel::POUType POUDeclaration::type() const { return type_; }

VarDeclaration::VarDeclaration(vel::ASTType nodeKind) : ASTNode(nodeKind) {}
VarDeclaration::~VarDeclaration() = default;
