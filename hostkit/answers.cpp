#include "hostkit/answers.h"

#include <string_view>

#include "hostkit/elementary_types.h"
#include "hostkit/folding.h"
#include "hostkit/tree_builder.h"

namespace hostkit {

int Answers::rate(vel::BasicDataType target, vel::BasicDataType source, const char* sourceText,
                  const std::string& /*unit*/) {
  return rateConversion(target, source, sourceText);
}

bool Answers::isWritable(vel::ASTNode& /*invocation*/, const std::string& /*text*/,
                         const std::string& /*unit*/, std::vector<vel::VELMessage>& /*messages*/) {
  return true;
}

vel::SymbolDataType* Answers::resolve(vel::ASTNode& typeSpec, vel::VarContainer& /*unit*/) {
  const std::string name(vel::TreeBuilder::source(typeSpec));
  return dynamic_cast<vel::SymbolDataType*>(find(name.c_str(), "", vel::Symbol::DataType));
}

bool Answers::parseAddress(const std::string& /*text*/, vel::HeapAddress& /*out*/) { return false; }

vel::HeapRawAddr Answers::place(const vel::HeapAddress& address) { return {address.position}; }

vel::BasicDataType Answers::addressType(const vel::HeapAddress& address) {
  if (address.area == 0) return vel::BasicDataType::None;
  if (address.isBitMode()) return vel::BasicDataType::BitAddress;
  switch (address.unitSize) {
    case 1:
      return vel::BasicDataType::USInt;
    case 2:
      return vel::BasicDataType::UInt;
    case 4:
      return vel::BasicDataType::UDInt;
    default:
      return vel::BasicDataType::ULInt;
  }
}

vel::JapanComponent Answers::components(const std::string& text) {
  const auto first = [&text](std::size_t from, auto isOf) {
    while (from < text.size() && isOf(text[from])) ++from;
    return from;
  };
  const std::size_t number = first(0, isLetter);
  const std::size_t suffix = first(number, [](char c) { return c >= '0' && c <= '9'; });
  if (number == 0 || suffix == number) return {};
  return {text.substr(0, number), text.substr(number, suffix - number), text.substr(suffix)};
}

std::string Answers::expressionText(vel::ASTNode& expression) {
  return std::string(vel::TreeBuilder::source(expression));
}

std::string Answers::variableText(vel::SymbolVar& variable, const std::string& /*unit*/) {
  const std::string& name = variable.name();
  const bool startsWithDigit = !name.empty() && name.front() >= '0' && name.front() <= '9';
  return startsWithDigit ? "_" + name : name;
}

std::string Answers::typeText(vel::SymbolDataType& type) {
  const std::string elementary = AstNodeHelper::basicDataToCTypeText(type.dataType());
  return elementary.empty() ? type.typeName() : elementary;
}

const std::string& Answers::translate(const std::string& format) { return format; }

void Answers::addCall(const std::string& /*caller*/, const std::string& /*callee*/,
                      vel::TextLocation /*where*/) {}

}  // namespace hostkit
