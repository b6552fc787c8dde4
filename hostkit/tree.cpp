#include "hostkit/tree.h"

#include "hostkit/literal.h"

namespace hostkit {

Expression* Tree::literal(Span span, vel::BasicDataType type, std::string_view typeName,
                          bool fixed) {
  auto* const value = make<ConstantValue>(span, {}, type, keep(typeName), fixed);
  Expression* const made = expression(span, Expression::Constant, {value});
  made->setBasicType(type);
  return made;
}

Expression* Tree::literal(Span span) {
  LiteralValue value;
  if (parseLiteral(span.source, value) != LiteralError::None) return nullptr;
  return literal(span, value.type, value.typeName, value.fixedType);
}

Invocation* Tree::invocation(Span span, vel::ASTText* name, Span list, Leaves parameters) {
  auto* const parameterList =
      make<vel::ASTNode>(list, std::move(parameters), vel::ASTType::ParameterList);
  return make<Invocation>(span, {name, parameterList}, kInvocationNode);
}

POUDeclaration* Tree::unit(std::string_view name, vel::POUType type, Leaves leaves) {
  return make<POUDeclaration>({}, std::move(leaves), kUnitNode, keep(name), type);
}

}  // namespace hostkit
