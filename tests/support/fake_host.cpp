#include "support/fake_host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <tuple>

#include "host/expression.h"
#include "host/text.h"
#include "support/fake_tree.h"

using vel::BasicDataType;

namespace {

struct TypeRow {
  BasicDataType type;
  const char* iecName;
  const char* variable;  // of that type in tests
  int size;
};

// The first row of a number gives its name; bit strings come after their partners.
constexpr std::array<TypeRow, 25> kTypes = {{
    {BasicDataType::SInt, "SINT", "si", 1},     {BasicDataType::Int, "INT", "i", 2},
    {BasicDataType::DInt, "DINT", "di", 4},     {BasicDataType::LInt, "LINT", "li", 8},
    {BasicDataType::USInt, "USINT", "us", 1},   {BasicDataType::UInt, "UINT", "ui", 2},
    {BasicDataType::UDInt, "UDINT", "ud", 4},   {BasicDataType::ULInt, "ULINT", "ul", 8},
    {BasicDataType::USInt, "BYTE", "by", 1},    {BasicDataType::UInt, "WORD", "w", 2},
    {BasicDataType::UDInt, "DWORD", "dw", 4},   {BasicDataType::ULInt, "LWORD", "lw", 8},
    {BasicDataType::Bool, "BOOL", "b", 1},      {BasicDataType::Real, "REAL", "r", 4},
    {BasicDataType::LReal, "LREAL", "lr", 8},   {BasicDataType::Time, "TIME", "t", 4},
    {BasicDataType::LTime, "LTIME", "lt", 8},   {BasicDataType::Date, "DATE", "d", 4},
    {BasicDataType::TimeOfDay, "TOD", "td", 4}, {BasicDataType::DateAndTime, "DT", "dt", 4},
    {BasicDataType::String, "STRING", "s", 0},  {BasicDataType::WString, "WSTRING", "ws", 0},
    {BasicDataType::Pointer, "", "p", 4},       {BasicDataType::Structure, "", "st", 0},
    {BasicDataType::Derived, "DINT", "n", 0},
}};

template <class Predicate>
const TypeRow* findType(Predicate predicate) {
  const auto* found = std::find_if(kTypes.begin(), kTypes.end(), predicate);
  return found == kTypes.end() ? nullptr : found;
}

const TypeRow* findType(BasicDataType type) {
  return findType([type](const TypeRow& row) { return row.type == type; });
}

struct FakePou : vel::SymbolPOU {
  using SymbolPOU::SymbolPOU;
  void add(vel::SymbolVar* variable) { params_.push_back(variable); }
  void setBlock(vel::SymbolFBType* type) { fbType_ = type; }
};

struct PlacedVar : vel::SymbolVar {
  PlacedVar(const std::string& name, std::uint32_t raw, const vel::HeapAddress& address)
      : SymbolVar(name, nullptr, 0) {
    backendAddress_.address = raw;
    iecAddress_ = address;
    fixedAddress_ = address.area != 0;
  }
};

}  // namespace

FakeAddress FakeHost::known(const std::string& text) const {
  const auto found = addresses.find(text);
  return found != addresses.end() ? found->second : FakeAddress();
}
FakeAddress FakeHost::known(const vel::HeapAddress& address) const {
  const auto key = [](const vel::HeapAddress& a) {
    return std::tuple(a.area, a.unitSize, a.position, a.bitIndex, a.extra);
  };
  for (const auto& [text, each] : addresses) {
    if (key(each.address) == key(address)) return each;
  }
  return {{}, kNoPlace, BasicDataType::None, {}};
}

DataTypeInfo FakeHost::typeOf(const std::string& text) {
  if (text == "TRUE" || text == "FALSE") return {BasicDataType::Bool, "BOOL"};
  if (text == "q") return {BasicDataType::Undetermined, ""};
  const std::string prefix = text.substr(0, text.find('#'));
  const TypeRow* literal =
      prefix == text ? nullptr
                     : findType([&](const TypeRow& each) { return prefix == each.iecName; });
  if (literal != nullptr) return {literal->type, literal->iecName};
  const std::string word = text.substr(0, text.find_first_of("0123456789 .('"));
  if (word.empty() && !text.empty()) {
    if (text[0] == '\'') return {BasicDataType::String, "STRING"};
    return text.find('.') == std::string::npos ? DataTypeInfo{BasicDataType::Int, "INT"}
                                               : DataTypeInfo{BasicDataType::LReal, "LREAL"};
  }
  const TypeRow* row = findType([&](const TypeRow& each) { return word == each.variable; });
  if (row == nullptr) return {};
  return {row->type, row->iecName};
}

void FakeHost::declare(const std::string& name, vel::POUType type, const std::vector<int>& kinds) {
  auto unit = std::make_unique<FakePou>(this, name, type, nullptr);
  for (const int kind : kinds) {
    auto variable = std::make_unique<vel::SymbolVar>("in", nullptr, kind);
    unit->add(kind < 0 ? nullptr : variable.get());
    symbolsMade_.push_back(std::move(variable));
  }
  if (type == vel::POUType::FunctionBlock) {
    auto block = std::make_unique<vel::SymbolFBType>(name);
    unit->setBlock(block.get());
    symbolsMade_.push_back(std::move(block));
  }
  units.insert(units.begin(), std::move(unit));
}

void FakeHost::place(const std::string& scopeAndName, std::uint32_t raw,
                     const vel::HeapAddress& address) {
  const std::string name = scopeAndName.substr(scopeAndName.find(':') + 1);
  named[scopeAndName] = std::make_unique<PlacedVar>(name, raw, address);
}

std::string FakeHost::takeCalls() {
  std::string all;
  for (const std::string& call : std::exchange(calls, {})) all += (all.empty() ? "" : "\n") + call;
  return all;
}

std::string FakeHost::describe(const std::vector<vel::VELMessage>& messages) {
  std::string all;
  for (const vel::VELMessage& each : messages) {
    EXPECT_EQ(each.reserved, -1);
    EXPECT_EQ(each.extra1 + each.extra2, "");
    EXPECT_TRUE(each.severity == 1 || each.severity == 2) << each.severity;
    all += all.empty() ? "@" : "\n@";
    all += std::to_string(each.location.offset()) + (each.severity == 1 ? " E " : " W ");
    all += AstNodeHelper::stringFormat(each.code, "%X ", each.code) + each.text;
  }
  return all;
}

vel::SymbolManager* FakeHost::symbolManager() { return this; }
const std::string& FakeHost::translate(const std::string& format) {
  return translations_.try_emplace(format, "~" + format).first->second;
}
vel::DeviceMemory* FakeHost::deviceMemory() { return this; }
vel::CallTree* FakeHost::callTree() { return this; }
vel::OpManagerAPI* FakeHost::operatorManager() { return registry; }
int FakeHost::addressNotation() { return notation; }
vel::ProjectSettings* FakeHost::projectSettings() { return &settings; }

vel::Symbol* FakeHost::symbolOf(const std::string& name, vel::Symbol::Type kind) {
  const std::string upper = stringToUpper(name);
  if ((kind & vel::Symbol::DataType) != 0 && !upper.empty()) {
    const TypeRow* row = findType([&](const TypeRow& each) { return upper == each.iecName; });
    if (row != nullptr) {
      return symbolsMade_
          .emplace_back(std::make_unique<vel::SymbolDataType>(row->iecName, row->type))
          .get();
    }
  }
  if ((kind & vel::Symbol::Variable) != 0) {
    const DataTypeInfo info = typeOf(name);
    vel::SymbolDataType* type = nullptr;
    if (!info.name.empty()) {
      type = static_cast<vel::SymbolDataType*>(symbolOf(info.name, vel::Symbol::DataType));
    }
    if (info.type != BasicDataType::None) {
      return symbolsMade_.emplace_back(std::make_unique<vel::SymbolVar>(name, type, 0)).get();
    }
  }
  if ((kind & vel::Symbol::Pou) != 0) {
    for (const auto& unit : units) {
      if (unit->name().size() != upper.size()) continue;
      if (stringToUpper(unit->name()) == upper) return unit.get();
    }
  }
  return nullptr;
}

const char* FakeGenerator::optionText(const char* name) { return options[name].c_str(); }
std::string FakeGenerator::typeText(vel::SymbolDataType* type) {
  return type != nullptr ? type->typeName() + "_t" : "";
}
std::string FakeGenerator::variableText(vel::SymbolVar* variable, int flag,
                                        const std::string& pouName) {
  return pouName + "." + variable->name() + "/" + std::to_string(flag);
}
std::string FakeGenerator::expressionText(vel::ASTNode* expression) {
  const std::string source = vel::TreeBuilder::text(expression);
  if (texts.count(source) != 0) return texts[source];
  return expression != nullptr ? source + "'" : "";
}
std::string FakeGenerator::prepareConstant(const std::string& text, BasicDataType type) {
  static_cast<FakeHost*>(ii)->calls.push_back("constant " + text + " " +
                                              AstNodeHelper::basicDataTypeText(type));
  return "discarded";
}

// The library of the host.

std::string stringToUpper(const std::string& text) {
  std::string upper = text;
  for (char& c : upper) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  return upper;
}

std::string AstNodeHelper::astText(vel::ASTNode* node) { return vel::TreeBuilder::text(node); }

DataTypeInfo AstNodeHelper::dataType(vel::InternalInterface* ii, vel::ASTNode* expression,
                                     const std::string& pouName,
                                     std::vector<vel::VELMessage>& messages) {
  auto* host = static_cast<FakeHost*>(ii);
  const std::string text = astText(expression);
  if (host->complaints.count(text) != 0) {
    messages.push_back({expression->pos(), -1, 1, 0xF0002, text + " in " + pouName, "", ""});
  }
  return FakeHost::typeOf(text);
}

vel::SymbolDataType* AstNodeHelper::dataType(vel::InternalInterface* ii, BasicDataType type) {
  return static_cast<vel::SymbolDataType*>(
      static_cast<FakeHost*>(ii)->symbolOf(basicDataTypeText(type), vel::Symbol::DataType));
}

std::string AstNodeHelper::basicDataTypeText(BasicDataType type) {
  const TypeRow* row = type <= BasicDataType::WString ? findType(type) : nullptr;
  return row != nullptr && *row->iecName != 0 ? row->iecName : "INVALID";
}

std::string AstNodeHelper::basicDataToCTypeText(BasicDataType type) {
  return basicDataTypeText(type) + "_c";
}

int AstNodeHelper::getBasicDataTypeSize(vel::InternalInterface* /*ii*/, BasicDataType type) {
  const TypeRow* row = findType(type);
  return row != nullptr ? row->size : 0;
}

bool AstNodeHelper::checkAstWritable(vel::InternalInterface* ii, vel::ASTNode* node,
                                     const std::string& text, const std::string& pouName,
                                     std::vector<vel::VELMessage>& messages, bool flag1,
                                     bool flag2) {
  EXPECT_FALSE(flag1 || flag2);
  auto* host = static_cast<FakeHost*>(ii);
  host->calls.push_back("write " + text + " in " + pouName);
  const bool writable = host->readOnly.count(text) == 0;
  if (!writable) messages.push_back({node->pos(), -1, 1, 0xF0003, text, "", ""});
  return writable;
}

bool AstNodeHelper::isIntegerType(BasicDataType type) {
  return type >= BasicDataType::SInt && type <= BasicDataType::ULInt;
}
bool AstNodeHelper::isUIntegerType(BasicDataType type) {
  return type >= BasicDataType::USInt && type <= BasicDataType::ULInt;
}
bool AstNodeHelper::isFloatType(BasicDataType type) {
  return type == BasicDataType::Real || type == BasicDataType::LReal;
}
BasicDataType AstNodeHelper::tranIntegerBasicType(BasicDataType type) {
  if (type == BasicDataType::USInt) return BasicDataType::Int;
  if (type == BasicDataType::UInt) return BasicDataType::DInt;
  const bool wide = type == BasicDataType::UDInt || type == BasicDataType::ULInt;
  return wide ? BasicDataType::LInt : type;
}

int AstNodeHelper::compareDataType(vel::InternalInterface* ii, BasicDataType target,
                                   BasicDataType source, const char* sourceText,
                                   const std::string& pouName) {
  auto* host = static_cast<FakeHost*>(ii);
  host->calls.push_back(basicDataTypeText(target) + " := " + basicDataTypeText(source) + " " +
                        (sourceText != nullptr ? sourceText : "-") + " in " + pouName);
  return host->rating;
}

bool AstNodeHelper::stringCanConvertToBool(std::string text) {
  std::set<std::string> literals = {"TRUE", "FALSE", "yes"};
  return !literals.insert(std::move(text)).second;
}
bool AstNodeHelper::isConstant(vel::ASTNode* node) {
  const auto* expression = dynamic_cast<const Expression*>(node);
  return dynamic_cast<const ConstantValue*>(node) != nullptr ||
         (expression != nullptr && expression->op() == Expression::Constant);
}
std::string AstNodeHelper::opExpTextToMd5HexText(const std::string& op,
                                                 const std::string& expression) {
  return op + "|" + expression;
}

std::string AstNodeHelper::stringFormat(unsigned int /*code*/, const char* format, ...) {
  std::array<char, 512> text = {};
  va_list arguments;
  va_start(arguments, format);
  static_cast<void>(std::vsnprintf(text.data(), text.size(), format, arguments));
  va_end(arguments);
  return text.data();
}

namespace vel {

ASTNode::ASTNode(ASTType type) : type_(type) {}
ASTNode::~ASTNode() = default;
ASTType ASTNode::type() const { return type_; }
int ASTNode::leavesCount() const { return leavesCount_; }
ASTNode* ASTNode::leaf(int i) const {
  EXPECT_TRUE(i >= 0 && i < leavesCount_) << "leaf " << i << " of " << leavesCount_;
  return i >= 0 && i < leavesCount_ ? leaves_[i] : nullptr;
}
ASTNode* ASTNode::parent() const { return parent_; }
TextLocation ASTNode::pos() const { return pos_; }
ASTNode* ASTNode::getPouAST(ASTNode* node) {
  while (node != nullptr && dynamic_cast<POUDeclaration*>(node) == nullptr) node = node->parent();
  return node;
}

ASTText::ASTText(ASTType type, const char* text) : ASTNode(type), text_(text) {}
ASTText::~ASTText() = default;
const char* ASTText::text() const { return text_; }

CallTree::~CallTree() = default;
void CallTree::addOperatorCaller(const std::string& caller, const std::string& callee,
                                 TextLocation location) {
  static_cast<FakeHost*>(this)->calls.push_back(caller + " -> " + callee + " @" +
                                                std::to_string(location.offset()));
}
void CallTree::addFirmwareCaller(const std::string& callee) {
  static_cast<FakeHost*>(this)->calls.push_back("firmware " + callee);
}

SymbolManager::~SymbolManager() = default;
Symbol* SymbolManager::symbol(const char* name, const char* scope, Symbol::Type kind) {
  auto& host = static_cast<FakeHost&>(*this);
  const auto found = host.named.find(std::string(scope) + ":" + name);
  const bool isNamed =
      found != host.named.end() && (kind == Symbol::All || found->second->symbolType() == kind);
  return isNamed ? found->second.get() : host.symbolOf(name, kind);
}
bool SymbolManager::addPOU(SymbolPOU* pou, int index) {
  EXPECT_EQ(index, -1);
  EXPECT_TRUE(pou->services() != nullptr && pou->returnVariable() == nullptr);
  auto& host = static_cast<FakeHost&>(*this);
  if (host.refusedUnits.count(pou->name()) != 0) return false;
  host.units.emplace_back(pou);
  return true;
}

BasicData::BasicData(BasicDataType type) : type_(type) {}
BasicDataType BasicData::type() const { return type_; }
GenClanAPI::~GenClanAPI() = default;
Generator::Generator(InternalInterface* services) : ii(services) {}
Generator::~Generator() = default;
InternalInterface::~InternalInterface() = default;
JapanComponent DeviceMemory::parseComponent(const std::string& text) {
  return static_cast<FakeHost*>(this)->known(text).parts;
}
DeviceMemory::~DeviceMemory() = default;
bool DeviceMemory::string2IecAddress(const std::string& text, HeapAddress* out, bool strict) {
  EXPECT_FALSE(strict);
  const auto* host = static_cast<FakeHost*>(this);
  if (host->addresses.count(text) == 0) return false;
  *out = host->known(text).address;
  return true;
}
BasicDataType DeviceMemory::iecAddressType(const HeapAddress& address) {
  return static_cast<FakeHost*>(this)->known(address).type;
}
HeapRawAddr DeviceMemory::HeapAddress2HeapRawAddr(const HeapAddress& address) {
  return {static_cast<FakeHost*>(this)->known(address).raw};
}

}  // namespace vel

vel::SymbolDataType* VarDeclaration::astSpec2SymbolDataType(vel::InternalInterface* ii,
                                                            vel::VarContainer* scope,
                                                            vel::ASTNode* typeSpec, bool* ok) {
  auto* host = static_cast<FakeHost*>(ii);
  const std::string text = AstNodeHelper::astText(typeSpec);
  host->calls.push_back("spec " + text + " in " + scope->name());
  auto* type = static_cast<vel::SymbolDataType*>(host->symbolOf(text, vel::Symbol::DataType));
  *ok = type != nullptr;
  return type;
}
