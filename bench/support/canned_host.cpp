#include "bench/support/canned_host.h"

#include <array>

#include "bench/support/canned_tree.h"
#include "host/ast_node_helper.h"
#include "host/call_tree.h"
#include "host/expression.h"
#include "host/symbol_manager.h"
#include "host/text.h"

using vel::BasicDataType;

namespace {

// The operations of the contract that are asked for.
enum class Request : std::uint64_t {
  SymbolManager = 1,
  Symbol,
  AddPou,
  Translate,
  DeviceMemory,
  ParseAddress,
  AddressType,
  RawAddress,
  ParseComponent,
  CallTree,
  OperatorCaller,
  FirmwareCaller,
  OperatorManager,
  Notation,
  Settings,
  Option,
  TypeText,
  VariableText,
  ExpressionText,
  PrepareConstant,
  ToUpper,
  Split,
  AstText,
  DataType,
  ElementaryType,
  TypeName,
  CTypeName,
  TypeSize,
  IsInteger,
  IsUnsigned,
  IsFloat,
  TranInteger,
  Compare,
  IsBool,
  IsConstant,
  IsWritable,
  Digest,
  Format,
};

void note(Request request) {
  CannedHost::trace() = (CannedHost::trace() ^ static_cast<std::uint64_t>(request)) * 1099511628211;
}

constexpr std::array<const char*, 20> kTypeNames = {
    "",     "SINT",  "INT",  "DINT",  "LINT", "USINT", "UINT", "UDINT", "ULINT",  "BOOL",
    "REAL", "LREAL", "TIME", "LTIME", "DATE", "TOD",   "DT",   "",      "STRING", "WSTRING"};

const char* typeName(BasicDataType type) {
  const auto number = static_cast<std::size_t>(type);
  return number < kTypeNames.size() ? kTypeNames[number] : "INVALID";
}

}  // namespace

struct CannedHost::Services {
  explicit Services(CannedHost& owner) : symbols(owner), memory(owner) {}

  struct Symbols : vel::SymbolManager {
    explicit Symbols(CannedHost& owner) : host(owner) {}
    CannedHost& host;
  } symbols;
  struct Memory : vel::DeviceMemory {
    explicit Memory(CannedHost& owner) : answers(owner.answers) {}
    CannedAnswers& answers;
  } memory;
  vel::CallTree calls;
};

CannedHost::CannedHost() : services_(std::make_unique<Services>(*this)) {}
CannedHost::~CannedHost() = default;

std::uint64_t& CannedHost::trace() {
  static std::uint64_t digest = 0;
  return digest;
}

vel::SymbolManager* CannedHost::symbolManager() {
  note(Request::SymbolManager);
  return &services_->symbols;
}
const std::string& CannedHost::translate(const std::string& format) {
  note(Request::Translate);
  if (format_ != format) format_ = format;
  return format_;
}
vel::DeviceMemory* CannedHost::deviceMemory() {
  note(Request::DeviceMemory);
  return &services_->memory;
}
vel::CallTree* CannedHost::callTree() {
  note(Request::CallTree);
  return &services_->calls;
}
vel::OpManagerAPI* CannedHost::operatorManager() {
  note(Request::OperatorManager);
  return registry;
}
int CannedHost::addressNotation() {
  note(Request::Notation);
  return 0;
}
vel::ProjectSettings* CannedHost::projectSettings() {
  note(Request::Settings);
  return &settings;
}

const char* CannedGenerator::optionText(const char* /*name*/) {
  note(Request::Option);
  return "I:0-16;Q:0-16;";
}
std::string CannedGenerator::typeText(vel::SymbolDataType* /*type*/) {
  note(Request::TypeText);
  return "i16";
}
std::string CannedGenerator::variableText(vel::SymbolVar* /*variable*/, int /*flag*/,
                                          const std::string& /*pouName*/) {
  note(Request::VariableText);
  return "self->state";
}
std::string CannedGenerator::expressionText(vel::ASTNode* expression) {
  note(Request::ExpressionText);
  return std::string(vel::TreeBuilder::source(expression));
}
std::string CannedGenerator::prepareConstant(const std::string& /*text*/, BasicDataType /*type*/) {
  note(Request::PrepareConstant);
  return {};
}

// The library of the host.

std::string stringToUpper(const std::string& text) {
  note(Request::ToUpper);
  return text;  // the names in the trees are in capitals
}
std::vector<std::string> stringSplit(const std::string& text, const std::string& /*separators*/) {
  note(Request::Split);
  return {text};
}

std::string AstNodeHelper::astText(vel::ASTNode* node) {
  note(Request::AstText);
  return std::string(vel::TreeBuilder::source(node));
}
DataTypeInfo AstNodeHelper::dataType(vel::InternalInterface* /*ii*/, vel::ASTNode* expression,
                                     const std::string& /*pouName*/,
                                     std::vector<vel::VELMessage>& /*messages*/) {
  note(Request::DataType);
  if (expression == nullptr || expression->type() != vel::ASTType::Expression) return {};
  const BasicDataType type = static_cast<Expression*>(expression)->basicType();
  return {type, typeName(type)};
}
vel::SymbolDataType* AstNodeHelper::dataType(vel::InternalInterface* ii, BasicDataType /*type*/) {
  note(Request::ElementaryType);
  return static_cast<vel::SymbolDataType*>(static_cast<CannedHost*>(ii)->answers.dataType);
}
std::string AstNodeHelper::basicDataTypeText(BasicDataType type) {
  note(Request::TypeName);
  return typeName(type);
}
std::string AstNodeHelper::basicDataToCTypeText(BasicDataType /*type*/) {
  note(Request::CTypeName);
  return "i16";
}
int AstNodeHelper::getBasicDataTypeSize(vel::InternalInterface* /*ii*/, BasicDataType /*type*/) {
  note(Request::TypeSize);
  return 2;
}
bool AstNodeHelper::isIntegerType(BasicDataType type) {
  note(Request::IsInteger);
  return type >= BasicDataType::SInt && type <= BasicDataType::ULInt;
}
bool AstNodeHelper::isUIntegerType(BasicDataType type) {
  note(Request::IsUnsigned);
  return type >= BasicDataType::USInt && type <= BasicDataType::ULInt;
}
bool AstNodeHelper::isFloatType(BasicDataType type) {
  note(Request::IsFloat);
  return type == BasicDataType::Real || type == BasicDataType::LReal;
}
BasicDataType AstNodeHelper::tranIntegerBasicType(BasicDataType type) {
  note(Request::TranInteger);
  return type;
}
int AstNodeHelper::compareDataType(vel::InternalInterface* /*ii*/, BasicDataType /*target*/,
                                   BasicDataType /*source*/, const char* /*sourceText*/,
                                   const std::string& /*pouName*/) {
  note(Request::Compare);
  return 0;
}
// NOLINTNEXTLINE(performance-unnecessary-value-param): the contract takes it by value
bool AstNodeHelper::stringCanConvertToBool(std::string /*text*/) {
  note(Request::IsBool);
  return true;
}
bool AstNodeHelper::isConstant(vel::ASTNode* /*node*/) {
  note(Request::IsConstant);
  return false;
}
bool AstNodeHelper::checkAstWritable(vel::InternalInterface* /*ii*/, vel::ASTNode* /*node*/,
                                     const std::string& /*text*/, const std::string& /*pouName*/,
                                     std::vector<vel::VELMessage>& /*messages*/, bool /*flag1*/,
                                     bool /*flag2*/) {
  note(Request::IsWritable);
  return true;
}
std::string AstNodeHelper::opExpTextToMd5HexText(const std::string& /*op*/,
                                                 const std::string& /*expression*/) {
  note(Request::Digest);
  return "0123456789abcdef0123456789abcdef";
}
std::string AstNodeHelper::stringFormat(unsigned int /*code*/, const char* format, ...) {
  note(Request::Format);
  return format;
}

vel::SymbolDataType* VarDeclaration::astSpec2SymbolDataType(vel::InternalInterface* ii,
                                                            vel::VarContainer* /*scope*/,
                                                            vel::ASTNode* /*typeSpec*/, bool* ok) {
  *ok = true;
  return static_cast<vel::SymbolDataType*>(static_cast<CannedHost*>(ii)->answers.dataType);
}

namespace vel {

ASTNode::ASTNode(ASTType type) : type_(type) {}
ASTNode::~ASTNode() = default;
ASTType ASTNode::type() const { return type_; }
int ASTNode::leavesCount() const { return leavesCount_; }
ASTNode* ASTNode::leaf(int i) const { return i >= 0 && i < leavesCount_ ? leaves_[i] : nullptr; }
ASTNode* ASTNode::parent() const { return parent_; }
TextLocation ASTNode::pos() const { return pos_; }
// The unit is the root of every tree.
ASTNode* ASTNode::getPouAST(ASTNode* node) {
  while (node != nullptr && node->parent_ != nullptr) node = node->parent_;
  return node;
}
ASTText::ASTText(ASTType type, const char* text) : ASTNode(type), text_(text) {}
ASTText::~ASTText() = default;
const char* ASTText::text() const { return text_; }
BasicData::BasicData(BasicDataType type) : type_(type) {}
BasicDataType BasicData::type() const { return type_; }

GenClanAPI::~GenClanAPI() = default;
Generator::Generator(InternalInterface* services) : ii(services) {}
Generator::~Generator() = default;
InternalInterface::~InternalInterface() = default;

CallTree::~CallTree() = default;
void CallTree::addOperatorCaller(const std::string& /*caller*/, const std::string& /*callee*/,
                                 TextLocation /*location*/) {
  note(Request::OperatorCaller);
}
void CallTree::addFirmwareCaller(const std::string& /*callee*/) { note(Request::FirmwareCaller); }

SymbolManager::~SymbolManager() = default;
Symbol* SymbolManager::symbol(const char* /*name*/, const char* /*scope*/, Symbol::Type kind) {
  note(Request::Symbol);
  const CannedAnswers& answers = static_cast<CannedHost::Services::Symbols*>(this)->host.answers;
  switch (kind) {
    case Symbol::DataType:
      return answers.dataType;
    case Symbol::Variable:
      return answers.variable;
    case Symbol::Pou:
      return answers.unit;
    default:
      return answers.any;
  }
}
// Takes the unit, and has no use for it.
bool SymbolManager::addPOU(SymbolPOU* pou, int /*index*/) {
  note(Request::AddPou);
  std::vector<std::string>* units = static_cast<CannedHost::Services::Symbols*>(this)->host.units;
  if (units != nullptr) units->push_back(pou->name());
  delete pou;
  return true;
}

DeviceMemory::~DeviceMemory() = default;
bool DeviceMemory::string2IecAddress(const std::string& /*text*/, HeapAddress* out,
                                     bool /*strict*/) {
  note(Request::ParseAddress);
  *out = static_cast<CannedHost::Services::Memory*>(this)->answers.address;
  return out->area != 0;
}
BasicDataType DeviceMemory::iecAddressType(const HeapAddress& /*address*/) {
  note(Request::AddressType);
  return BasicDataType::Bool;
}
HeapRawAddr DeviceMemory::HeapAddress2HeapRawAddr(const HeapAddress& address) {
  note(Request::RawAddress);
  return {address.position};
}
JapanComponent DeviceMemory::parseComponent(const std::string& /*text*/) {
  note(Request::ParseComponent);
  return {};
}

}  // namespace vel
