// The smallest host: has the plugin check the call LIMIT(0, x, 100) and write its C.
//
// The plugin leaves the operations of host/ undefined; they resolve to what this program
// defines and exports. A compiler defines them all and loads with RTLD_NOW. With RTLD_LAZY the
// plugin needs the operations that are called, and the classes whose types it asks for.
#include <dlfcn.h>

#include <cstdio>
#include <memory>

#include "core/op_manager_api.h"
#include "core/operator.h"
#include "host/ast_node_helper.h"
#include "host/expression.h"
#include "host/generator.h"
#include "host/internal_interface.h"
#include "host/symbol_manager.h"
#include "host/text.h"

namespace vel {

// The tree.
class TreeBuilder {
 public:
  static void link(ASTNode& node, const char* source, std::vector<ASTNode*>& leaves) {
    node.source_ = source;
    node.leaves_ = leaves.data();
    node.leavesCount_ = static_cast<int>(leaves.size());
  }
  static const char* text(const ASTNode* node) { return node->source_; }
};
ASTNode::ASTNode(ASTType type) : type_(type) {}
ASTNode::~ASTNode() = default;
ASTType ASTNode::type() const { return type_; }
int ASTNode::leavesCount() const { return leavesCount_; }
ASTNode* ASTNode::leaf(int i) const { return i >= 0 && i < leavesCount_ ? leaves_[i] : nullptr; }
ASTNode* ASTNode::getPouAST(ASTNode* /*node*/) { return nullptr; }  // no program unit around it
ASTText::ASTText(ASTType type, const char* text) : ASTNode(type), text_(text) {}
ASTText::~ASTText() = default;
const char* ASTText::text() const { return text_; }

// The symbols. The registry adds a program unit for each operator.
HeapAddress::HeapAddress() : area(0), unitSize(~0U), position(~0U), bitIndex(~0U), extra(0) {}
Symbol::Symbol(Type type, const std::string& name) : name_(name), type_(type) {}
Symbol::~Symbol() = default;
SymbolDataType::~SymbolDataType() = default;
std::string SymbolDataType::typeName() const { return {}; }
SymbolTyped::~SymbolTyped() = default;
SymbolDataType* SymbolTyped::dataType() const { return type_; }
SymbolMemUnit::SymbolMemUnit(Type type, const std::string& name) : Symbol(type, name) {}
SymbolMemUnit::~SymbolMemUnit() = default;
SymbolVar::~SymbolVar() = default;
VarContainer::VarContainer(Type type, const std::string& name) : SymbolMemUnit(type, name) {}
VarContainer::~VarContainer() = default;
SymbolPOU::SymbolPOU(InternalInterface* ii, const std::string& name, POUType type,
                     SymbolVar* returnVar)
    : VarContainer(Pou, name), ii_(ii), type_(type), returnVar_(returnVar) {}
SymbolPOU::~SymbolPOU() = default;
bool SymbolPOU::resetLayout(int /*generation*/) { return true; }
void SymbolPOU::setCompiled(int /*state*/) {}
Symbol* SymbolPOU::visitChild(const std::string& /*name*/, int* /*cursor*/) { return nullptr; }
void SymbolPOU::setBackendAddress(const HeapRawAddr& address) { backendAddress_ = address; }
SymbolManager::~SymbolManager() = default;

InternalInterface::~InternalInterface() = default;
GenClanAPI::~GenClanAPI() = default;
Generator::Generator(InternalInterface* services) : ii(services) {}
Generator::~Generator() = default;

}  // namespace vel

Expression::Expression(Operator op) : ASTNode(vel::ASTType::Expression), op_(op) {}
Expression::~Expression() = default;
Invocation::Invocation(vel::ASTType type) : ASTNode(type) {}
Invocation::~Invocation() = default;
ConstantValue::~ConstantValue() = default;
POUDeclaration::~POUDeclaration() = default;

// Types: here every expression is an INT, and an INT may stand wherever one is wanted.
DataTypeInfo AstNodeHelper::dataType(vel::InternalInterface*, vel::ASTNode*, const std::string&,
                                     std::vector<vel::VELMessage>&) {
  return {vel::BasicDataType::Int, "INT"};
}
std::string AstNodeHelper::basicDataTypeText(vel::BasicDataType) { return "INT"; }
bool AstNodeHelper::isFloatType(vel::BasicDataType) { return false; }
int AstNodeHelper::compareDataType(vel::InternalInterface*, vel::BasicDataType, vel::BasicDataType,
                                   const char*, const std::string&) {
  return 0;
}
std::string stringToUpper(const std::string& text) { return text; }

struct Services : vel::InternalInterface, vel::SymbolManager {
  std::vector<std::unique_ptr<vel::SymbolPOU>> units;
  vel::SymbolManager* symbolManager() override { return this; }
  const std::string& translate(const std::string& format) override { return format; }
  vel::DeviceMemory* deviceMemory() override { return nullptr; }
  vel::CallTree* callTree() override { return nullptr; }
  vel::OpManagerAPI* operatorManager() override { return nullptr; }
  int addressNotation() override { return 0; }
  vel::ProjectSettings* projectSettings() override { return nullptr; }
};
bool vel::SymbolManager::addPOU(SymbolPOU* pou, int /*index*/) {
  static_cast<Services*>(this)->units.emplace_back(pou);
  return true;
}
struct CText : vel::Generator {
  using Generator::Generator;
  const char* optionText(const char*) override { return ""; }
  std::string typeText(vel::SymbolDataType*) override { return "i16"; }
  std::string variableText(vel::SymbolVar*, int, const std::string&) override { return {}; }
  std::string expressionText(vel::ASTNode* node) override { return vel::TreeBuilder::text(node); }
  std::string prepareConstant(const std::string&, vel::BasicDataType) override { return {}; }
};

template <class Node>
struct Made : Node {
  template <class... Arguments>
  Made(const char* source, std::vector<vel::ASTNode*> children, Arguments... arguments)
      : Node(arguments...), leaves(std::move(children)) {
    vel::TreeBuilder::link(*this, source, leaves);
  }
  std::vector<vel::ASTNode*> leaves;
};

int main(int /*argc*/, char** argv) {
  void* const plugin = dlopen(argv[1], RTLD_LAZY);
  void* const entry = plugin != nullptr ? dlsym(plugin, "CreateOpManager") : nullptr;
  if (entry == nullptr) {
    std::fprintf(stderr, "minimal-host: %s\n", dlerror());
    return 2;
  }
  Services services;
  const std::unique_ptr<vel::OpManagerAPI> registry(
      reinterpret_cast<decltype(&CreateOpManager)>(entry)(&services));

  Made<Expression> low("0", {}, Expression::Constant), high("100", {}, Expression::Constant);
  Made<Expression> input("x", {}, Expression::Variable);
  Made<vel::ASTText> name("LIMIT", {}, vel::ASTType(1), "LIMIT");
  Made<vel::ASTNode> list("0, x, 100", {&low, &input, &high}, vel::ASTType::ParameterList);
  Made<Invocation> call("LIMIT(0, x, 100)", {&name, &list}, vel::ASTType(2));

  vel::STOperator* const limit = registry->findOperator("limit");
  std::vector<vel::VELMessage> messages;
  std::string type;
  if (!limit->check(&services, &call, messages, type, "")) return 1;
  CText text(&services);
  std::printf("%s\n%s: %s\n", limit->staticCode(&text).c_str(), type.c_str(),
              limit->generate(&text, &call).c_str());
}
