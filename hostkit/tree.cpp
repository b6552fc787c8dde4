#include "hostkit/tree.h"

#include <algorithm>
#include <charconv>

#include "hostkit/folding.h"
#include "hostkit/literal.h"

namespace hostkit {

bool isName(std::string_view text) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  const auto isPart = [&](char c) { return c == '_' || isDigit(c) || isLetter(c); };
  return !text.empty() && !isDigit(text[0]) && std::all_of(text.begin(), text.end(), isPart);
}

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

Expression* Tree::place(Span span) {
  if (span.source.substr(0, 1) == "%" || isName(span.source)) {
    return expression(span, Expression::Variable);
  }
  const std::size_t dot = span.source.find('.');
  const std::string_view name = span.source.substr(0, dot);
  if (dot == std::string_view::npos || !isName(name)) return nullptr;
  const char* const end = span.source.data() + span.source.size();
  std::uint8_t bit = 0;
  const auto [rest, error] = std::from_chars(span.source.data() + dot + 1, end, bit);
  if (rest != end || error != std::errc()) return nullptr;
  Expression* const access =
      expression(span, Expression::Typed, {expression({name, span.start}, Expression::Variable)});
  vel::TreeBuilder::setBitAccessOffset(*access, bit);
  return access;
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
