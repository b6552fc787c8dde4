// Operations of expressions, literals and declarations: what every host keeps of them.
#include "host/declaration.h"
#include "host/expression.h"

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
    : ASTNode(nodeKind), kind(static_cast<int>(type)), name_(name), type_(type) {}
POUDeclaration::~POUDeclaration() = default;
const char* POUDeclaration::name() const { return name_; }
vel::POUType POUDeclaration::type() const { return type_; }

VarDeclaration::VarDeclaration(vel::ASTType nodeKind) : ASTNode(nodeKind) {}
VarDeclaration::~VarDeclaration() = default;
