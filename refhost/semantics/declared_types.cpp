// The order in which TYPE declarations are resolved.
#include <algorithm>

#include "hostkit/folding.h"
#include "refhost/prelude/prelude.h"
#include "refhost/semantics/parts.h"
#include "refhost/services/dependency_order.h"

namespace refhost {

using vel::ASTNode;
using vel::ASTType;
using vel::TreeBuilder;

namespace {

bool isVariable(const ASTNode& node) {
  return node.type() == ASTType::Expression &&
         static_cast<const Expr&>(node).kind == ExprKind::Variable;
}

bool isBefore(const ASTNode& a, const ASTNode& b) {
  const vel::TextLocation first = a.pos();
  const vel::TextLocation second = b.pos();
  return first.file() != second.file() ? first.file() < second.file()
                                       : first.offset() < second.offset();
}

// True of a specification that is a named type or has one as its base.
bool namesType(const ASTNode& node) {
  const ASTType kind = node.type();
  return kind == ASTType::NamedTypeSpec || kind == ASTType::SubrangeTypeSpec ||
         kind == ASTType::EnumTypeSpec;
}

}  // namespace

// False also for a declaration with a syntax error, which has no specification.
bool Types::isSpecOf(const ASTNode& declaration, ASTType kind) {
  const ASTNode* const spec = declaration.leaf(kDeclaredSpec);
  return spec != nullptr && spec->type() == kind;
}

// Declarations may name types that are declared later. So structures are added before their
// members, and enumerations before the types whose bounds and lengths may use their values.
void Types::declareTypes() {
  for (Node* const node : tree_.types) {
    const char* const name = nameOf(*node);
    if (services_.symbols.find(name, {}, Symbol::All) != nullptr) {
      const UnitSymbol* const unit = services_.symbols.unit(name);
      const ASTNode* const unitName = unit != nullptr ? unit->node->leaf(Unit::kName) : nullptr;
      const bool later = unitName != nullptr && isBefore(*node->leaf(0), *unitName);
      if (later) {
        sayRedeclared(*unitName, name, node->leaf(0));
      } else {
        sayRedeclared(*node->leaf(0), name, unitName);
      }
      // The name of a function block is known as that of a type.
      if (!later && (unit == nullptr || unit->type() == vel::POUType::FunctionBlock)) continue;
    }
    const auto [known, isNew] = declaredTypes_.emplace(name, DeclaredType(node));
    if (!isNew) sayRedeclared(*node->leaf(0), name, known->second.node->leaf(0));
  }
  std::vector<DeclaredType*> declared;
  for (const Node* const node : tree_.types) {
    const auto found = declaredTypes_.find(nameOf(*node));
    if (found != declaredTypes_.end() && found->second.node == node) {
      declared.push_back(&found->second);
    }
  }
  for (DeclaredType* const type : declared) {
    if (!isSpecOf(*type->node, ASTType::StructTypeSpec)) continue;
    type->resolved = {services_.symbols.addType(
                          std::make_unique<StructType>(nameOf(*type->node), *type->node->leaf(0))),
                      static_cast<Expr*>(type->node->leaf(kDeclaredInitial))};
    type->progress = Progress::Done;
  }
  for (DeclaredType* const type : declared) {
    if (!isSpecOf(*type->node, ASTType::EnumTypeSpec)) continue;
    const ASTNode& spec = *type->node->leaf(kDeclaredSpec);
    for (int i = 0; i < spec.leavesCount(); ++i)
      enumerationOf_.emplace(nameOf(*spec.leaf(i)), type);
  }
  for (DeclaredType* const type : declared) {
    if (isSpecOf(*type->node, ASTType::EnumTypeSpec)) resolveDeclared(*type);
  }
  for (DeclaredType* const type : declared) resolveDeclared(*type);
  for (DeclaredType* const type : declared) {
    auto* const structure = dynamic_cast<StructType*>(type->resolved.type);
    if (structure != nullptr && isSpecOf(*type->node, ASTType::StructTypeSpec)) {
      declareMembers(*structure, *type->node->leaf(kDeclaredSpec));
    }
  }
}

// Leaves the values of an enumeration that cannot be resolved out of later messages.
void Types::excuseValues(const DeclaredType& declared) {
  if (!isSpecOf(*declared.node, ASTType::EnumTypeSpec)) return;
  const ASTNode& spec = *declared.node->leaf(kDeclaredSpec);
  for (int i = 0; i < spec.leavesCount(); ++i) {
    context_.unknown.emplace(nameOf(*spec.leaf(i)), true);
  }
}

bool Types::mayName(std::string_view name) const {
  const auto declares = [name](const Node* node) { return equalIgnoringCase(nameOf(*node), name); };
  const bool waits =
      declaredTypes_.empty() && std::any_of(tree_.types.begin(), tree_.types.end(), declares);
  return waits || context_.prelude.unit(std::string(name)) != nullptr;
}

ResolvedType Types::resolveDeclared(DeclaredType& declared) {
  visitDependencies(
      declared, [this](const DeclaredType& item) { return neededBy(item); },
      [this](const std::vector<DeclaredType*>& cycle) {
        const ASTNode& first = *cycle.front()->node;
        say(*first.leaf(0), message::kTypeContainsItself, nameOf(first));
        for (const DeclaredType* const type : cycle) excuseValues(*type);
      },
      [this](DeclaredType& item, const auto&) { resolveNow(item); });
  return declared.resolved;
}

// True of the name of a value in the declaration of an enumeration.
bool Types::hasValue(const ASTNode& spec, std::string_view name) {
  for (int i = 0; i < spec.leavesCount(); ++i) {
    if (equalIgnoringCase(nameOf(*spec.leaf(i)), name)) return true;
  }
  return false;
}

std::vector<Types::DeclaredType*> Types::neededBy(const DeclaredType& declared) {
  std::vector<DeclaredType*> needed;
  const ASTNode* const whole = declared.node->leaf(kDeclaredSpec);
  if (whole == nullptr) return needed;
  const bool enumeration = whole->type() == ASTType::EnumTypeSpec;
  anyNode(*whole, [&](const ASTNode& node) {
    if (namesType(node)) {
      const auto found = declaredTypes_.find(static_cast<const TypeSpec&>(node).name);
      if (found != declaredTypes_.end()) needed.push_back(&found->second);
    } else if (enumeration && isVariable(node)) {
      DeclaredType* const other = enumerationNamedBy(node);
      const bool own = other == &declared || hasValue(*whole, TreeBuilder::source(node));
      if (other != nullptr && !own) needed.push_back(other);
    }
    return false;
  });
  return needed;
}

// The declared enumeration that `node` names, alone (before a '.' or a '#') or by one of its
// values; null for none.
Types::DeclaredType* Types::enumerationNamedBy(const ASTNode& node) {
  const std::string_view text = TreeBuilder::source(node);
  const std::string_view name = text.substr(0, text.find('#'));
  const auto type = declaredTypes_.find(name);
  if (type != declaredTypes_.end()) return &type->second;
  const auto value = enumerationOf_.find(name);
  return value != enumerationOf_.end() ? value->second : nullptr;
}

bool Types::resolveEnumerationOf(const ASTNode& node) {
  DeclaredType* const declared = enumerationNamedBy(node);
  if (declared == nullptr || declared->progress != Progress::Waiting) return false;
  resolveDeclared(*declared);
  return true;
}

void Types::resolveNow(DeclaredType& declared) {
  if (declared.node->leaf(kDeclaredSpec) == nullptr) return;
  ResolvedType resolved = resolve(*declared.node->leaf(kDeclaredSpec), nameOf(*declared.node));
  if (Expr* const initial = parts_.expressions.settled(*declared.node, kDeclaredInitial)) {
    resolved.initial = initial;
  }
  if (resolved.type != nullptr) services_.symbols.addAlias(nameOf(*declared.node), resolved.type);
  declared.resolved = resolved;
}

}  // namespace refhost
