#include "hostkit/services.h"

#include <string_view>

#include "hostkit/strict.h"

using hostkit::Answers;
using hostkit::Services;

namespace hostkit {

const char* TextGenerator::optionText(const char* name) {
  return name == std::string_view("localio.addr") ? services_.settings.localIoAddress.c_str() : "";
}
std::string TextGenerator::typeText(vel::SymbolDataType* type) {
  require(type != nullptr);
  return type != nullptr ? services_.answers.typeText(*type) : std::string();
}
std::string TextGenerator::variableText(vel::SymbolVar* variable, int /*flag*/,
                                        const std::string& unit) {
  require(variable != nullptr);
  return variable != nullptr ? services_.answers.variableText(*variable, unit) : std::string();
}
std::string TextGenerator::expressionText(vel::ASTNode* expression) {
  require(expression != nullptr);
  return expression != nullptr ? services_.answers.expressionText(*expression) : std::string();
}
std::string TextGenerator::prepareConstant(const std::string& text, vel::BasicDataType /*type*/) {
  return text;
}

}  // namespace hostkit

namespace vel {

InternalInterface::~InternalInterface() = default;
GenClanAPI::~GenClanAPI() = default;
Generator::Generator(InternalInterface* services) : ii(services) {}
Generator::~Generator() = default;

namespace {

// Downcasts a class of the contract, all of which are bases of the one Services object.
template <class Part>
Answers& answersOf(Part* part) {
  return static_cast<Services*>(part)->answers;
}

}  // namespace

SymbolManager::~SymbolManager() = default;
Symbol* SymbolManager::symbol(const char* name, const char* scope, Symbol::Type kind) {
  return answersOf(this).find(name, scope, kind);
}
bool SymbolManager::addPOU(SymbolPOU* pou, int index) {
  hostkit::require(pou != nullptr && index == -1);
  return answersOf(this).addUnit(pou);
}

DeviceMemory::~DeviceMemory() = default;
bool DeviceMemory::string2IecAddress(const std::string& text, HeapAddress* out, bool strict) {
  hostkit::require(!strict);
  HeapAddress unused;
  return answersOf(this).parseAddress(text, out != nullptr ? *out : unused);
}
BasicDataType DeviceMemory::iecAddressType(const HeapAddress& address) {
  return answersOf(this).addressType(address);
}
HeapRawAddr DeviceMemory::HeapAddress2HeapRawAddr(const HeapAddress& address) {
  return answersOf(this).place(address);
}
JapanComponent DeviceMemory::parseComponent(const std::string& text) {
  return answersOf(this).components(text);
}

CallTree::~CallTree() = default;
void CallTree::addOperatorCaller(const std::string& caller, const std::string& callee,
                                 TextLocation location) {
  answersOf(this).addCall(caller, callee, location);
}
void CallTree::addFirmwareCaller(const std::string& callee) {
  answersOf(this).addCall({}, callee, TextLocation());
}

}  // namespace vel
