#include "fuzz/fuzz_host.h"

#include <array>
#include <utility>

#include "hostkit/elementary_types.h"
#include "hostkit/unit.h"

using vel::BasicDataType;

namespace fuzz {
namespace {

constexpr std::array<const char*, 20> kWords = {
    "x",    "y.3", "%IX0.1", "%QB7",     "%MW10", "X1",    "Y10",  "M5",   "D0.3",           "5",
    "-128", "'a'", "TRUE",   "REAL#1.5", "st.x",  "a + b", "BYTE", "WORD", "I:0-16;Q:0-16;", "_"};

struct PlacedVariable final : vel::SymbolVar {
  PlacedVariable(const std::string& name, vel::SymbolDataType* type) : SymbolVar(name, type, 100) {
    fixedAddress_ = true;
    iecAddress_.area = 1;
    backendAddress_.address = 77;
  }
};

}  // namespace

template <class Kept>
Kept* FuzzHost::keep(std::unique_ptr<Kept> symbol) {
  Kept* const kept = symbol.get();
  pool_.push_back(std::move(symbol));
  return kept;
}

FuzzHost::FuzzHost() : Services(this) {
  std::vector<vel::SymbolDataType*> types = {nullptr};
  const auto addType = [&](const char* name, BasicDataType type) {
    types.push_back(keep(std::make_unique<vel::SymbolDataType>(name, type)));
  };
  for (const hostkit::ElementaryType& row : hostkit::elementaryTypes()) {
    if (row.name != nullptr) addType(row.name, row.type);
  }
  addType("Named", BasicDataType::Derived);
  addType("Struct", BasicDataType::Structure);
  addType("Enum", BasicDataType::Enumeration);
  addType("INVALID", BasicDataType::None);
  for (vel::SymbolDataType* const type : types) {
    for (const std::int32_t kind : {4, 8, 12}) {
      keep(std::make_unique<vel::SymbolVar>("v", type, kind));
    }
    keep(std::make_unique<PlacedVariable>("v", type));
  }
  for (const auto type : {vel::POUType::Program, vel::POUType::Function,
                          vel::POUType::FunctionBlock, vel::POUType::Operator}) {
    for (int inputs = 0; inputs < 4; ++inputs) {
      auto* const unit = keep(std::make_unique<hostkit::Unit>(this, "U", type));
      if (inputs == 3) unit->addParameter(nullptr);
      for (int i = 0; i < inputs; ++i) unit->addInput("in");
      if (inputs == 3) {
        unit->addParameter(std::make_unique<vel::SymbolVar>("x", types[2], 8));
        unit->addParameter(std::make_unique<vel::SymbolVar>("y", nullptr, 4));
      }
    }
  }
  keep(std::make_unique<vel::SymbolTyped>("t", nullptr));
  keep(std::make_unique<vel::SymbolTyped>("t", types[2]));
}

void FuzzHost::drawSettings() {
  settings.localIoAddress = text();
  notation = input->ConsumeIntegralInRange(-1, 2);
  translates_ = chance();
  // Most hosts have them all.
  const auto lacks = input->ConsumeIntegralInRange(0, 31);
  hasMemory_ = (lacks & 16) == 0 || (lacks & 1) == 0;
  keepsCalls_ = (lacks & 16) == 0 || (lacks & 2) == 0;
  knowsRegistry_ = (lacks & 16) == 0 || (lacks & 4) == 0;
  hasSettings_ = (lacks & 16) == 0 || (lacks & 8) == 0;
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

const std::string& FuzzHost::translate(const std::string& format) {
  if (!translates_) return format;
  translation_ = format;
  return translation_;
}

DataTypeInfo FuzzHost::typeOf(vel::ASTNode& expression, const std::string& /*unit*/,
                              std::vector<vel::VELMessage>& messages) {
  if (input->ConsumeIntegralInRange(0, 9) == 9) {
    messages.push_back({expression.pos(), -1, 1, 0xF0002, "complaint", "", ""});
  }
  const BasicDataType drawn = type();
  return {drawn, chance() ? text() : AstNodeHelper::basicDataTypeText(drawn)};
}

vel::Symbol* FuzzHost::find(const char* /*name*/, const char* /*unit*/, vel::Symbol::Type kind) {
  if (input == nullptr) return nullptr;
  const auto first = input->ConsumeIntegralInRange<std::size_t>(0, pool_.size());
  for (std::size_t i = first; i < pool_.size(); ++i) {
    if ((pool_[i]->symbolType() & kind) != 0) return pool_[i].get();
  }
  return nullptr;
}

bool FuzzHost::addUnit(vel::SymbolPOU* unit) {
  units_.emplace_back(unit);
  return true;
}

int FuzzHost::rate(BasicDataType /*target*/, BasicDataType /*source*/, const char* /*sourceText*/,
                   const std::string& /*unit*/) {
  return input->ConsumeIntegralInRange(-4, 1);
}

bool FuzzHost::isWritable(vel::ASTNode& invocation, const std::string& text,
                          const std::string& /*unit*/, std::vector<vel::VELMessage>& messages) {
  if (chance()) return true;
  messages.push_back({invocation.pos(), -1, 1, 0xF0003, text, "", ""});
  return false;
}

vel::SymbolDataType* FuzzHost::resolve(vel::ASTNode& /*typeSpec*/, vel::VarContainer& /*unit*/) {
  return static_cast<vel::SymbolDataType*>(find("", "", vel::Symbol::DataType));
}

bool FuzzHost::parseAddress(const std::string& /*text*/, vel::HeapAddress& out) {
  if (!chance()) return false;
  out.area = input->ConsumeIntegralInRange(0U, 4U);
  out.unitSize = input->ConsumeIntegralInRange(0U, 9U);
  out.position = input->ConsumeIntegral<std::uint32_t>();
  if (chance()) out.bitIndex = input->ConsumeIntegralInRange(0U, 64U);
  return true;
}
vel::HeapRawAddr FuzzHost::place(const vel::HeapAddress& /*address*/) {
  return {input->ConsumeIntegral<std::uint32_t>()};
}
BasicDataType FuzzHost::addressType(const vel::HeapAddress& /*address*/) { return type(); }
vel::JapanComponent FuzzHost::components(const std::string& /*text*/) {
  return {text(), text(), text()};
}

std::string FuzzHost::expressionText(vel::ASTNode& /*expression*/) { return text(); }
std::string FuzzHost::variableText(vel::SymbolVar& /*variable*/, const std::string& /*unit*/) {
  return text();
}
std::string FuzzHost::typeText(vel::SymbolDataType& /*type*/) { return text(); }

template <class Node, class... Arguments>
Node* FuzzTree::add(Leaves leaves, Arguments... arguments) {
  const std::string source = host_.text();
  const vel::TextLocation start(1, host_.input->ConsumeIntegral<std::uint16_t>());
  return tree_.make<Node>({source, start}, std::move(leaves), arguments...);
}

const char* FuzzTree::textOrNull() {
  const std::string text = host_.text();
  return text == "_" ? nullptr : tree_.keep(text);
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
      return add<vel::ASTText>({}, hostkit::kWordNode, textOrNull());
    case 3:
      return add<ConstantValue>(leaves(depth), host_.type(), tree_.keep(host_.text()),
                                host_.chance());
    case 4:
      return invocation(host_.text(), depth);
    default: {
      const auto op = static_cast<Expression::Operator>(input.ConsumeIntegralInRange(0, 21));
      Expression* const made = add<Expression>(leaves(depth), op);
      made->setBasicType(host_.type());
      if (host_.chance()) {
        vel::TreeBuilder::setBitAccessOffset(*made, input.ConsumeIntegralInRange(-2, 70));
      }
      return made;
    }
  }
}

vel::ASTNode* FuzzTree::invocation(const std::string& name, int depth) {
  vel::ASTNode* const callee = add<vel::ASTText>({}, hostkit::kWordNode, tree_.keep(name));
  vel::ASTNode* const list = add<vel::ASTNode>(leaves(depth), vel::ASTType::ParameterList);
  Invocation* const made = add<Invocation>({callee, list}, hostkit::kInvocationNode);
  made->setBasicType(host_.type());
  return made;
}

vel::ASTNode* FuzzTree::call(const std::string& name) {
  constexpr int kDepth = 3;
  vel::ASTNode* const made = host_.chance() ? invocation(name, kDepth) : node(kDepth);
  Leaves siblings = {made};
  if (host_.chance()) siblings.insert(siblings.begin(), node(1));
  vel::ASTNode* const parent = host_.chance() ? add<vel::ASTNode>(siblings, hostkit::kStatementNode)
                                              : add<Expression>(siblings, Expression::Operator{2});
  if (host_.chance()) {
    POUDeclaration* const unit =
        add<POUDeclaration>({parent}, hostkit::kUnitNode, textOrNull(),
                            static_cast<vel::POUType>(host_.input->ConsumeIntegralInRange(0, 5)));
    unit->kind = host_.input->ConsumeIntegralInRange(-1, 4);
  }
  return made;
}

}  // namespace fuzz
