#include "fuzz/fuzz_host.h"

#include <array>
#include <cstdarg>
#include <cstdio>

#include "host/ast_node_helper.h"

using vel::BasicDataType;

namespace vel {

// The host's maker of nodes.
class TreeBuilder {
 public:
  static void set(ASTNode& node, std::vector<ASTNode*>& leaves, const std::string& source,
                  std::uint32_t offset) {
    node.leavesCount_ = static_cast<int>(leaves.size());
    node.leaves_ = leaves.data();
    node.source_ = source.c_str();
    node.length_ = static_cast<std::uint32_t>(source.size());
    node.pos_ = TextLocation(1, offset);
    for (ASTNode* const leaf : leaves) {
      if (leaf != nullptr) leaf->parent_ = &node;
    }
  }
  static void setBit(Expression& node, std::int32_t bit) { node.bitAccessOffset_ = bit; }
  static std::string source(const ASTNode& node) { return {node.source_, node.length_}; }
};

}  // namespace vel

namespace fuzz {
namespace {

constexpr std::array<const char*, 25> kTypeNames = {
    "INVALID", "SINT",    "INT",   "DINT",   "LINT",  "USINT", "UINT",   "UDINT", "ULINT",
    "BOOL",    "REAL",    "LREAL", "TIME",   "LTIME", "DATE",  "TOD",    "DT",    "INVALID",
    "STRING",  "WSTRING", "Named", "Struct", "Enum",  "Block", "INVALID"};

constexpr std::array<const char*, 20> kWords = {
    "x",    "y.3", "%IX0.1", "%QB7",     "%MW10", "X1",    "Y10",  "M5",   "D0.3",           "5",
    "-128", "'a'", "TRUE",   "REAL#1.5", "st.x",  "a + b", "BYTE", "WORD", "I:0-16;Q:0-16;", "_"};

// The constructors of nodes are the host's own.
template <class Node>
struct Made final : Node {
  template <class... Arguments>
  explicit Made(Arguments... arguments) : Node(arguments...) {}
};

struct Unit final : vel::SymbolPOU {
  using SymbolPOU::SymbolPOU;
  void add(vel::SymbolVar* parameter) { params_.push_back(parameter); }
  void setBlock(vel::SymbolFBType* type) { fbType_ = type; }
};

struct Variable final : vel::SymbolVar {
  Variable(const std::string& name, vel::SymbolDataType* type, std::int32_t kind, bool placed)
      : SymbolVar(name, type, kind) {
    if (!placed) return;
    fixedAddress_ = true;
    iecAddress_.area = 1;
    backendAddress_.address = 77;
  }
};

FuzzHost& hostOf(vel::InternalInterface* ii) { return *static_cast<FuzzHost*>(ii); }

}  // namespace

FuzzHost::FuzzHost() {
  std::vector<vel::SymbolDataType*> types = {nullptr};
  const auto keep = [this](auto symbol) {
    auto* const kept = symbol.get();
    pool_.push_back(std::move(symbol));
    return kept;
  };
  for (std::size_t i = 0; i < kTypeNames.size(); ++i) {
    types.push_back(
        keep(std::make_unique<vel::SymbolDataType>(kTypeNames[i], static_cast<BasicDataType>(i))));
  }
  auto* const block = keep(std::make_unique<vel::SymbolFBType>("Block"));
  std::vector<vel::SymbolVar*> variables = {nullptr};
  for (const std::int32_t kind : {4, 8, 12, 100}) {
    for (vel::SymbolDataType* const type : types) {
      variables.push_back(keep(std::make_unique<Variable>("v", type, kind, kind == 100)));
    }
  }
  for (const auto type : {vel::POUType::Program, vel::POUType::Function,
                          vel::POUType::FunctionBlock, vel::POUType::Operator}) {
    for (std::size_t inputs = 0; inputs < 4; ++inputs) {
      auto* const unit = keep(std::make_unique<Unit>(this, "U", type, nullptr));
      if (inputs % 2 == 0) unit->setBlock(block);
      for (std::size_t i = 0; i < inputs; ++i) unit->add(variables[27 * i % variables.size()]);
    }
  }
  keep(std::make_unique<vel::SymbolTyped>("t", nullptr));
  keep(std::make_unique<vel::SymbolTyped>("t", types[2]));
}

FuzzHost::~FuzzHost() = default;

void FuzzHost::drawSettings() {
  settings_.localIoAddress = text();
  notation_ = input->ConsumeIntegralInRange(-1, 2);
}

BasicDataType FuzzHost::type() {
  if (input == nullptr) return BasicDataType::None;
  const int drawn = input->ConsumeIntegralInRange(-1, 31);
  return static_cast<BasicDataType>(drawn < 31 ? drawn : input->ConsumeIntegral<int>());
}

std::string FuzzHost::text() {
  if (input == nullptr) return {};
  const auto which = input->ConsumeIntegralInRange<std::size_t>(0, kWords.size() + 3);
  return which < kWords.size() ? kWords[which] : input->ConsumeRandomLengthString(40);
}

vel::Symbol* FuzzHost::symbol(vel::Symbol::Type kind) {
  if (input == nullptr) return nullptr;
  const auto first = input->ConsumeIntegralInRange<std::size_t>(0, pool_.size());
  for (std::size_t i = first; i < pool_.size(); ++i) {
    if ((pool_[i]->symbolType() & kind) != 0) return pool_[i].get();
  }
  return nullptr;
}

vel::HeapAddress FuzzHost::address() {
  vel::HeapAddress drawn;
  drawn.area = input->ConsumeIntegralInRange(0U, 4U);
  drawn.unitSize = input->ConsumeIntegralInRange(0U, 9U);
  drawn.position = input->ConsumeIntegral<std::uint32_t>();
  if (input->ConsumeBool()) drawn.bitIndex = input->ConsumeIntegralInRange(0U, 64U);
  return drawn;
}

FuzzTree::FuzzTree(FuzzHost& host) : host_(host) {}
FuzzTree::~FuzzTree() = default;

template <class Node, class... Arguments>
vel::ASTNode* FuzzTree::add(Leaves leaves, Arguments... arguments) {
  auto made = std::make_unique<Made<Node>>(arguments...);
  Node* const node = made.get();
  nodes_.push_back(std::move(made));
  vel::TreeBuilder::set(*node, leaves_.emplace_back(std::move(leaves)),
                        texts_.emplace_back(host_.text()),
                        host_.input->ConsumeIntegral<std::uint16_t>());
  return node;
}

FuzzTree::Leaves FuzzTree::leaves(int depth) {
  Leaves drawn(host_.input->ConsumeIntegralInRange<std::size_t>(0, depth > 0 ? 5 : 0));
  for (vel::ASTNode*& leaf : drawn) leaf = node(depth - 1);
  return drawn;
}

vel::ASTNode* FuzzTree::node(int depth) {
  FuzzedDataProvider& input = *host_.input;
  switch (input.ConsumeIntegralInRange(0, 8)) {
    case 0:
      return nullptr;
    case 1: {
      const auto kind = static_cast<vel::ASTType>(input.ConsumeIntegral<std::uint8_t>());
      // Only expressions have their kind.
      return kind == vel::ASTType::Expression ? nullptr : add<vel::ASTNode>(leaves(depth), kind);
    }
    case 2:
      return add<vel::ASTText>({}, vel::ASTType{2}, keep(host_.text()));
    case 3:
      return add<ConstantValue>(leaves(depth), host_.type(), keep(host_.text()), host_.chance());
    case 4:
      return invocation(host_.text(), depth);
    default: {
      const auto op = static_cast<Expression::Operator>(input.ConsumeIntegralInRange(0, 21));
      auto* const made = static_cast<Expression*>(add<Expression>(leaves(depth), op));
      made->setBasicType(host_.type());
      if (host_.chance()) vel::TreeBuilder::setBit(*made, input.ConsumeIntegralInRange(-2, 70));
      return made;
    }
  }
}

vel::ASTNode* FuzzTree::invocation(const std::string& name, int depth) {
  vel::ASTNode* const callee = add<vel::ASTText>({}, vel::ASTType{2}, keep(name));
  vel::ASTNode* const list = add<vel::ASTNode>(leaves(depth), vel::ASTType::ParameterList);
  auto* const made = static_cast<Invocation*>(add<Invocation>({callee, list}, vel::ASTType{3}));
  made->setBasicType(host_.type());
  return made;
}

vel::ASTNode* FuzzTree::call(const std::string& name) {
  constexpr int kDepth = 3;
  vel::ASTNode* const made = host_.chance() ? invocation(name, kDepth) : node(kDepth);
  Leaves siblings = {made};
  if (host_.chance()) siblings.insert(siblings.begin(), node(1));
  vel::ASTNode* const parent = host_.chance() ? add<vel::ASTNode>(siblings, vel::ASTType{100})
                                              : add<Expression>(siblings, Expression::Operator{2});
  if (host_.chance()) {
    auto* const unit = static_cast<POUDeclaration*>(
        add<POUDeclaration>({parent}, vel::ASTType{101}, keep(host_.text()),
                            static_cast<vel::POUType>(host_.input->ConsumeIntegralInRange(0, 5))));
    unit->kind = host_.input->ConsumeIntegralInRange(-1, 4);
  }
  return made;
}

}  // namespace fuzz

// The library of the host.

using fuzz::hostOf;

std::string stringToUpper(const std::string& text) {
  std::string upper = text;
  for (char& c : upper) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  return upper;
}

std::string AstNodeHelper::astText(vel::ASTNode* node) {
  return node != nullptr ? vel::TreeBuilder::source(*node) : std::string();
}

DataTypeInfo AstNodeHelper::dataType(vel::InternalInterface* ii, vel::ASTNode* expression,
                                     const std::string&, std::vector<vel::VELMessage>& messages) {
  if (expression == nullptr) return {};
  if (hostOf(ii).input->ConsumeIntegralInRange(0, 9) == 9) {
    messages.push_back({expression->pos(), -1, 1, 0xF0002, "complaint", "", ""});
  }
  const BasicDataType type = hostOf(ii).type();
  return {type, hostOf(ii).chance() ? hostOf(ii).text() : basicDataTypeText(type)};
}

vel::SymbolDataType* AstNodeHelper::dataType(vel::InternalInterface* ii, BasicDataType) {
  return static_cast<vel::SymbolDataType*>(hostOf(ii).symbol(vel::Symbol::DataType));
}

std::string AstNodeHelper::basicDataTypeText(BasicDataType type) {
  const auto number = static_cast<std::size_t>(type);
  return number < fuzz::kTypeNames.size() ? fuzz::kTypeNames[number] : "INVALID";
}
std::string AstNodeHelper::basicDataToCTypeText(BasicDataType type) {
  return basicDataTypeText(type);
}
int AstNodeHelper::getBasicDataTypeSize(vel::InternalInterface* ii, BasicDataType) {
  return hostOf(ii).input->ConsumeIntegralInRange(-1, 16);
}
bool AstNodeHelper::checkAstWritable(vel::InternalInterface* ii, vel::ASTNode* node,
                                     const std::string& text, const std::string&,
                                     std::vector<vel::VELMessage>& messages, bool, bool) {
  if (hostOf(ii).chance()) return true;
  if (node != nullptr) messages.push_back({node->pos(), -1, 1, 0xF0003, text, "", ""});
  return false;
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
  return isUIntegerType(type) ? BasicDataType::LInt : type;
}
int AstNodeHelper::compareDataType(vel::InternalInterface* ii, BasicDataType, BasicDataType,
                                   const char*, const std::string&) {
  return hostOf(ii).input->ConsumeIntegralInRange(-4, 1);
}
bool AstNodeHelper::stringCanConvertToBool(std::string text) { return text == "TRUE"; }
bool AstNodeHelper::isConstant(vel::ASTNode* node) {
  return dynamic_cast<const ConstantValue*>(node) != nullptr;
}
std::string AstNodeHelper::opExpTextToMd5HexText(const std::string& op,
                                                 const std::string& expression) {
  return op + expression;
}
std::string AstNodeHelper::stringFormat(unsigned int, const char* format, ...) {
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
ASTNode* ASTNode::leaf(int i) const { return i >= 0 && i < leavesCount_ ? leaves_[i] : nullptr; }
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
void CallTree::addOperatorCaller(const std::string&, const std::string&, TextLocation) {}
void CallTree::addFirmwareCaller(const std::string&) {}

SymbolManager::~SymbolManager() = default;
Symbol* SymbolManager::symbol(const char*, const char*, Symbol::Type kind) {
  return static_cast<fuzz::FuzzHost::Symbols*>(this)->host.symbol(kind);
}
bool SymbolManager::addPOU(SymbolPOU* pou, int) {
  static_cast<fuzz::FuzzHost::Symbols*>(this)->host.keep(pou);
  return true;
}

BasicData::BasicData(BasicDataType type) : type_(type) {}
BasicDataType BasicData::type() const { return type_; }
GenClanAPI::~GenClanAPI() = default;
Generator::Generator(InternalInterface* services) : ii(services) {}
Generator::~Generator() = default;
InternalInterface::~InternalInterface() = default;

DeviceMemory::~DeviceMemory() = default;
JapanComponent DeviceMemory::parseComponent(const std::string&) {
  fuzz::FuzzHost& host = static_cast<fuzz::FuzzHost::Memory*>(this)->host;
  return {host.text(), host.text(), host.text()};
}
bool DeviceMemory::string2IecAddress(const std::string&, HeapAddress* out, bool) {
  fuzz::FuzzHost& host = static_cast<fuzz::FuzzHost::Memory*>(this)->host;
  if (!host.chance()) return false;
  *out = host.address();
  return true;
}
BasicDataType DeviceMemory::iecAddressType(const HeapAddress&) {
  return static_cast<fuzz::FuzzHost::Memory*>(this)->host.type();
}
HeapRawAddr DeviceMemory::HeapAddress2HeapRawAddr(const HeapAddress&) {
  return {static_cast<fuzz::FuzzHost::Memory*>(this)->host.input->ConsumeIntegral<std::uint32_t>()};
}

}  // namespace vel

vel::SymbolDataType* VarDeclaration::astSpec2SymbolDataType(vel::InternalInterface* ii,
                                                            vel::VarContainer*, vel::ASTNode*,
                                                            bool* ok) {
  auto* const type = static_cast<vel::SymbolDataType*>(hostOf(ii).symbol(vel::Symbol::DataType));
  if (ok != nullptr) *ok = type != nullptr;
  return type;
}
