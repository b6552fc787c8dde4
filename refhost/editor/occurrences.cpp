#include "refhost/editor/occurrences.h"

#include <algorithm>
#include <cstring>

#include "hostkit/folding.h"
#include "refhost/diagnostics.h"

namespace refhost {

using vel::ASTType;
using vel::TreeBuilder;

namespace {

using Lookup = Occurrence::Lookup;
using Type = vel::SymbolDataType;

const Expr& exprAt(const ASTNode& node, int leaf) {
  return static_cast<const Expr&>(*node.leaf(leaf));
}

const Type* elementOf(const Type* type) {
  if (const auto* const array = dynamic_cast<const ArrayType*>(type)) return array->element;
  if (const OpenArrayType* const open = asOpenArray(type)) return open->element;
  const auto* const pointer = dynamic_cast<const PointerType*>(type);
  return pointer != nullptr ? pointer->target : nullptr;
}

// Walks the tree and collects the names. A chain of left operands is visited by a loop.
class Walk {
 public:
  Walk(const AnalysedProgram& program, const Symbols& symbols, std::vector<Occurrence>& found)
      : program_(program), symbols_(symbols), found_(found) {}

  void run() {
    const Tree& tree = program_.tree;
    for (const VarBlock* const block : tree.globals) walkBlock(*block);
    for (const Node* const declaration : tree.types) walkTypeDecl(*declaration);
    for (const Unit* const unit : tree.units) walkUnit(*unit);
    for (const Unit* const unit : tree.tests) walkUnit(*unit);
    unit_ = kNoSymbol;
    for (const ConfigurationPart& part : tree.configurations) declare(*part.name);
    for (const ConfigurationItem* const task : tree.tasks) walkTask(*task);
    for (const ConfigurationItem* const instance : tree.instances) walkInstance(*instance);
    for (const VarBlock* const block : tree.configured) {
      for (int i = 0; i < block->leavesCount(); ++i) walkConfigured(*block->leaf(i));
    }
  }

 private:
  Occurrence* add(vel::TextLocation begin, std::size_t length, SymbolId symbol, Lookup lookup) {
    if (symbol == kNoSymbol || length == 0 || !program_.isOpenable(begin.file())) return nullptr;
    found_.push_back({{begin, static_cast<std::uint32_t>(length)}, symbol, unit_, lookup});
    return &found_.back();
  }
  Occurrence* add(const ASTNode& name, SymbolId symbol, Lookup lookup) {
    return add(name.pos(), TreeBuilder::source(name).size(), symbol, lookup);
  }
  void declare(const ASTNode& name, bool writes = false) {
    Occurrence* const added = add(name, symbols_.declaredAt(name), Lookup::Name);
    if (added == nullptr) return;
    added->declares = true;
    added->writes = writes;
  }

  // --- Declarations ---

  void walkUnit(const Unit& unit) {
    unit_ = symbols_.ofUnit(unit);
    if (unit.testPart == TestPart::None) declare(*unit.leaf(Unit::kName));
    if (const ASTNode* const result = unit.leaf(Unit::kReturnType)) walkType(*result);
    const ASTNode* const blocks = unit.leaf(Unit::kVarBlocks);
    for (int i = 0; blocks != nullptr && i < blocks->leavesCount(); ++i) {
      walkBlock(static_cast<const VarBlock&>(*blocks->leaf(i)));
    }
    if (unit.leaf(Unit::kBody) != nullptr) walk(*unit.leaf(Unit::kBody));
  }

  void walkBlock(const VarBlock& block) {
    for (int i = 0; i < block.leavesCount(); ++i) {
      walkVariables(*block.leaf(i), block.section == VarSection::External);
    }
  }

  void walkVariables(const ASTNode& declaration, bool external) {
    const ASTNode* const initial = declaration.leaf(VarDecl::kInitial);
    for (int n = VarDecl::kFirstName; n < declaration.leavesCount(); ++n) {
      const ASTNode& name = *declaration.leaf(n);
      const SymbolId id = symbols_.declaredAt(name);
      const bool refers = external && id != kNoSymbol && symbols_[id].kind == SymbolKind::Global;
      if (refers) {
        add(name, id, Lookup::Name);
      } else {
        declare(name, initial != nullptr);
      }
    }
    if (declaration.leaf(VarDecl::kType) != nullptr) walkType(*declaration.leaf(VarDecl::kType));
    if (initial == nullptr) return;
    const ASTNode& first = *declaration.leaf(VarDecl::kFirstName);
    const SymbolId id = symbols_.declaredAt(first);
    walkValue(static_cast<const Expr&>(*initial),
              id != kNoSymbol ? symbols_.dataType(id) : nullptr);
  }

  void walkTypeDecl(const ASTNode& declaration) {
    unit_ = kNoSymbol;
    declare(*declaration.leaf(0));
    const ASTNode* const spec = declaration.leaf(1);
    if (spec != nullptr) walkType(*spec);
    if (declaration.leaf(2) == nullptr) return;
    const bool plain = spec != nullptr && !isReferenceSpec(*spec);
    const Type* type = plain ? static_cast<const TypeSpec*>(spec)->dataType : nullptr;
    if (type == nullptr) {
      type = program_.services.symbols.dataType(TreeBuilder::source(*declaration.leaf(0)));
    }
    walkValue(exprAt(declaration, 2), type);
  }

  void walkType(const ASTNode& spec) {
    if (isReferenceSpec(spec)) {
      walkType(*spec.leaf(0));
      return;
    }
    const std::string_view name = static_cast<const TypeSpec&>(spec).name;
    switch (spec.type()) {
      case ASTType::NamedTypeSpec:
      case ASTType::SubrangeTypeSpec:
      case ASTType::EnumTypeSpec:
        nameType(spec, name);
        break;
      case ASTType::StructTypeSpec:
        for (int i = 0; i < spec.leavesCount(); ++i) walkVariables(*spec.leaf(i), false);
        return;
      case ASTType::ArrayTypeSpec:
      case ASTType::PointerTypeSpec:
      case ASTType::ReferenceTypeSpec:
        walkType(*spec.leaf(0));
        for (int i = 1; i < spec.leavesCount(); ++i) walk(*spec.leaf(i));
        return;
      default:
        break;
    }
    for (int i = 0; i < spec.leavesCount(); ++i) {
      if (spec.leaf(i) == nullptr) continue;
      const ASTNode& part = *spec.leaf(i);
      if (spec.type() == ASTType::EnumTypeSpec) {
        declare(*part.leaf(0), part.leaf(1) != nullptr);
        if (part.leaf(1) != nullptr) walk(*part.leaf(1));
      } else {
        walk(part);
      }
    }
  }

  // The name stands in front or, of an enumeration's base type, behind.
  void nameType(const ASTNode& spec, std::string_view name) {
    const std::string_view source = TreeBuilder::source(spec);
    if (name.empty() || source.size() < name.size()) return;
    const bool front = equalIgnoringCase(source.substr(0, name.size()), name);
    const std::size_t skipped = front ? 0 : source.size() - name.size();
    if (!equalIgnoringCase(source.substr(skipped, name.size()), name)) return;
    add(vel::TextLocation(spec.pos().file(),
                          spec.pos().offset() + static_cast<std::uint32_t>(skipped)),
        name.size(), typeNamed(name), Lookup::Type);
  }

  SymbolId typeNamed(std::string_view name) const {
    const SymbolId own = symbols_.ofType(name);
    if (own != kNoSymbol) return own;
    const SymbolId standard = symbols_.standard(name);
    const bool type =
        standard != kNoSymbol && symbols_[standard].kind == SymbolKind::ElementaryType;
    return type ? standard : kNoSymbol;
  }

  // An initial value. Lists have no type of their own, so the fields of structures are found by the
  // type of the variable.
  void walkValue(const Expr& value, const Type* type) {
    if (value.kind == ExprKind::ArrayValue || value.kind == ExprKind::Repeat) {
      for (int i = 0; i < value.leavesCount(); ++i) walkValue(exprAt(value, i), type);
      return;
    }
    if (value.kind != ExprKind::StructValue) {
      walkExpr(value, false);
      return;
    }
    while (const auto* const array = dynamic_cast<const ArrayType*>(type)) type = array->element;
    for (int i = 0; i < value.leavesCount(); ++i) {
      const ASTNode& field = *value.leaf(i);
      const VarSymbol* const member = memberOf(type, TreeBuilder::source(*field.leaf(0)));
      Occurrence* const added = add(*field.leaf(0), symbols_.of(member), Lookup::Qualified);
      if (added != nullptr) added->writes = true;
      walkValue(exprAt(field, 1), member != nullptr ? member->dataType() : nullptr);
    }
  }

  // --- Configurations ---

  void walkTask(const ConfigurationItem& task) {
    declare(*task.leaf(0));
    const ASTNode* const properties = static_cast<const Call&>(*task.leaf(1)).parameters();
    for (int i = 0; properties != nullptr && i < properties->leavesCount(); ++i) {
      const ASTNode& property = *properties->leaf(i);
      walk(kindOf(property) == NodeKind::Argument ? *property.leaf(1) : property);
    }
  }

  void walkInstance(const ConfigurationItem& instance) {
    declare(*instance.leaf(0));
    const auto& call = static_cast<const Call&>(*instance.leaf(1));
    const SymbolId program = symbols_.ofType(TreeBuilder::source(*call.leaf(0)));
    add(*call.leaf(0), program, Lookup::Type);
    walkArguments(call, program);
    if (instance.leaf(2) == nullptr) return;
    const SymbolId resource =
        instance.resource != nullptr ? symbols_.declaredAt(*instance.resource) : kNoSymbol;
    const SymbolId configuration = instance.configuration != nullptr
                                       ? symbols_.declaredAt(*instance.configuration)
                                       : kNoSymbol;
    const std::string_view name = TreeBuilder::source(*instance.leaf(2));
    for (const SymbolId owner : {resource, configuration}) {
      const SymbolId task = partNamed(owner, name, SymbolKind::Task);
      if (task == kNoSymbol) continue;
      add(*instance.leaf(2), task, Lookup::Qualified);
      return;
    }
  }

  SymbolId partNamed(SymbolId owner, std::string_view name, SymbolKind kind) const {
    if (owner == kNoSymbol) return kNoSymbol;
    for (const SymbolId part : symbols_.partsOf(owner)) {
      if (symbols_[part].kind == kind && equalIgnoringCase(symbols_[part].name, name)) return part;
    }
    return kNoSymbol;
  }

  // An entry of VAR_CONFIG: RESOURCE.INSTANCE.variable, INSTANCE.variable, PROGRAM.variable or the
  // name of a global variable, each with members. The analysis knows the variables.
  void walkConfigured(const ASTNode& entry) {
    if (entry.leaf(VarDecl::kType) != nullptr) walkType(*entry.leaf(VarDecl::kType));
    std::vector<const Expr*> names{&exprAt(entry, VarDecl::kFirstName)};
    while (isAccess(names.back()->kind)) names.push_back(&exprAt(*names.back(), 0));
    std::reverse(names.begin(), names.end());
    SymbolId owner = kNoSymbol;
    for (const Expr* const part : names) {
      const bool member = part->kind == ExprKind::Member;
      if (!member && part->kind != ExprKind::Variable) {
        for (int i = 1; i < part->leavesCount(); ++i) walk(*part->leaf(i));
        continue;
      }
      const ASTNode& name = member ? *part->leaf(1) : static_cast<const ASTNode&>(*part);
      const SymbolId variable = symbols_.of(part->symbol);
      const bool known = variable != kNoSymbol;
      if (!known) owner = rootNamed(TreeBuilder::source(name), owner);
      const bool path = !known || symbols_[variable].kind == SymbolKind::Global;
      Occurrence* const added =
          add(name, known ? variable : owner, path ? Lookup::Path : Lookup::Qualified);
      if (added != nullptr) added->writes = known && part == names.back();
    }
    const SymbolId last = symbols_.of(names.back()->symbol);
    if (entry.leaf(VarDecl::kInitial) == nullptr) return;
    walkValue(exprAt(entry, VarDecl::kInitial),
              last != kNoSymbol ? symbols_.dataType(last) : nullptr);
  }

  // An instance, a resource, or a PROGRAM of which there are no instances.
  SymbolId rootNamed(std::string_view name, SymbolId resource) const {
    SymbolId found = kNoSymbol;
    for (SymbolId id = 0; id < symbols_.count(); ++id) {
      const SymbolInfo& symbol = symbols_[id];
      const bool instance = symbol.kind == SymbolKind::Instance &&
                            (resource == kNoSymbol || symbol.container == resource);
      const bool root = resource == kNoSymbol && symbol.kind == SymbolKind::Resource;
      if (!instance && !root) continue;
      if (!equalIgnoringCase(symbol.name, name)) continue;
      if (instance) return id;
      found = id;
    }
    return found != kNoSymbol ? found : symbols_.ofType(name);
  }

  // --- Statements and expressions ---

  void walk(const ASTNode& node) {
    const auto statement = statementKindOf(node);
    if (node.type() == ASTType::Expression) {
      walkExpr(static_cast<const Expr&>(node), false);
    } else if (kindOf(node) == NodeKind::Invocation) {
      walkCall(static_cast<const Call&>(node));
    } else if (statement == StatementKind::Assignment || statement == StatementKind::Bind) {
      walkExpr(exprAt(node, 0), true);
      walk(*node.leaf(1));
    } else if (dynamic_cast<const TypeSpec*>(&node) != nullptr) {
      walkType(node);
    } else {
      for (int i = 0; i < node.leavesCount(); ++i) {
        if (node.leaf(i) != nullptr) walk(*node.leaf(i));
      }
    }
  }

  void walkExpr(const Expr& whole, bool writes) {
    for (const Expr* expr = &whole;;) {
      switch (formOf(expr->kind)) {
        case ExprForm::Literal:
          return;
        case ExprForm::Variable:
          walkName(*expr, writes);
          return;
        case ExprForm::Call:
          walkCall(static_cast<const Call&>(*expr->leaf(0)));
          return;
        case ExprForm::Parts:
          walkValue(*expr, expr->dataType);
          return;
        case ExprForm::Access:
          if (expr->kind == ExprKind::Member && walkMember(*expr, writes)) return;
          for (int i = 1; expr->kind == ExprKind::Element && i < expr->leavesCount(); ++i) {
            walk(*expr->leaf(i));
          }
          writes = writes && expr->kind != ExprKind::Dereference;
          break;
        case ExprForm::Unary:
        case ExprForm::Arithmetic:
        case ExprForm::Comparison:
        case ExprForm::Logic:
          writes = false;
          if (expr->leavesCount() > 1) walk(*expr->leaf(1));
          break;
      }
      if (expr->leaf(0)->type() != ASTType::Expression) {
        walk(*expr->leaf(0));
        return;
      }
      expr = &exprAt(*expr, 0);
    }
  }

  // A variable, a value of an enumeration with or without its type, or a type that is an operand.
  void walkName(const Expr& expr, bool writes) {
    const std::string_view text = TreeBuilder::source(expr);
    const std::size_t mark = text.find('#');
    if (mark != std::string_view::npos) {
      const SymbolId type = symbols_.ofType(text.substr(0, mark));
      add(expr.pos(), mark, type, Lookup::Type);
      SymbolId value = symbols_.of(expr.symbol);
      if (value == kNoSymbol) value = symbols_.partOf(type, text.substr(mark + 1));
      const auto skipped = static_cast<std::uint32_t>(mark) + 1;
      add(vel::TextLocation(expr.pos().file(), expr.pos().offset() + skipped),
          text.size() - skipped, value, Lookup::Qualified);
      return;
    }
    Occurrence* const added = add(expr, named(expr), Lookup::Name);
    if (added != nullptr) added->writes = writes;
  }

  SymbolId named(const Expr& name) const {
    const std::string_view text = TreeBuilder::source(name);
    SymbolId id = symbols_.of(name.symbol);
    if (id == kNoSymbol) id = symbols_.variable(text, unit_);
    if (id == kNoSymbol) id = symbols_.value(text, unit_);
    return id != kNoSymbol ? id : typeNamed(text);
  }

  // Returns true for a value with its type, `Color.Red`.
  bool walkMember(const Expr& expr, bool writes) {
    const ASTNode& name = *expr.leaf(1);
    const Expr& base = exprAt(expr, 0);
    SymbolId member = symbols_.of(expr.symbol);
    const bool isValue = member != kNoSymbol && symbols_[member].kind == SymbolKind::Value;
    if (isValue || (base.kind == ExprKind::Variable && base.symbol == nullptr)) {
      const std::string_view typeName = TreeBuilder::source(base);
      const SymbolId type = symbols_.ofType(typeName);
      const SymbolId value = isValue ? member : symbols_.partOf(type, TreeBuilder::source(name));
      const bool variable = !isValue && symbols_.variable(typeName, unit_) != kNoSymbol;
      if (type != kNoSymbol && !variable && symbols_[type].kind != SymbolKind::Structure) {
        add(base, type, Lookup::Name);
        add(name, value, Lookup::Qualified);
        return true;
      }
    }
    if (member == kNoSymbol)
      member = symbols_.of(memberOf(typeOf(base), TreeBuilder::source(name)));
    Occurrence* const added = add(name, member, Lookup::Qualified);
    if (added != nullptr) added->writes = writes;
    return false;
  }

  // Also of an expression that the analysis has not reached.
  const Type* typeOf(const Expr& expr) const {
    if (expr.dataType != nullptr) return expr.dataType;
    switch (expr.kind) {
      case ExprKind::Variable: {
        const SymbolId id = named(expr);
        return id != kNoSymbol ? symbols_.dataType(id) : nullptr;
      }
      case ExprKind::Member: {
        const VarSymbol* const member =
            memberOf(typeOf(exprAt(expr, 0)), TreeBuilder::source(*expr.leaf(1)));
        return member != nullptr ? member->dataType() : nullptr;
      }
      case ExprKind::Element:
      case ExprKind::Dereference:
        return elementOf(typeOf(exprAt(expr, 0)));
      default:
        return nullptr;
    }
  }

  void walkCall(const Call& call) {
    const ASTNode& name = *call.leaf(0);
    SymbolId callee = kNoSymbol;
    if (name.type() == ASTType::Expression) {
      walkExpr(static_cast<const Expr&>(name), false);
      callee = blockOf(typeOf(static_cast<const Expr&>(name)));
    } else {
      const SymbolId id = calleeNamed(call, TreeBuilder::source(name));
      add(name, id, Lookup::Callee);
      const bool unit = id == kNoSymbol || isUnit(symbols_[id].kind);
      callee = unit ? id : blockOf(symbols_[id].isDeclared() ? symbols_.dataType(id) : nullptr);
    }
    walkArguments(call, callee);
    for (const Argument* const argument : {call.enable, call.enabled}) {
      if (argument != nullptr) walkExpr(exprAt(*argument, 1), argument->output);
    }
  }

  SymbolId calleeNamed(const Call& call, std::string_view name) const {
    if (call.instance != nullptr) return symbols_.of(call.instance->symbol);
    if (call.function() != nullptr) return symbols_.ofUnit(*call.function()->node);
    const SymbolId standard = symbols_.standard(name);
    if (standard != kNoSymbol) return standard;
    const SymbolId unit = symbols_.ofType(name);
    if (unit != kNoSymbol && symbols_[unit].kind == SymbolKind::Function) return unit;
    const SymbolId variable = symbols_.variable(name, unit_);
    return variable != kNoSymbol ? variable : unit;
  }

  SymbolId blockOf(const Type* type) const {
    const auto* const instance = dynamic_cast<const InstanceType*>(type);
    return instance != nullptr ? symbols_.ofUnit(*instance->unit->node) : kNoSymbol;
  }

  // The arguments of a call of the unit; kNoSymbol for an operator.
  void walkArguments(const Call& call, SymbolId unit) {
    const ASTNode* const list = call.parameters();
    if (list == nullptr && call.leavesCount() > 1 && call.leaf(1) != nullptr) walk(*call.leaf(1));
    for (int i = 0; list != nullptr && i < list->leavesCount(); ++i) {
      const ASTNode& item = *list->leaf(i);
      if (kindOf(item) != NodeKind::Argument) {
        walk(item);
        continue;
      }
      const auto& argument = static_cast<const Argument&>(item);
      const SymbolId formal = unit != kNoSymbol
                                  ? symbols_.variableOf(unit, TreeBuilder::source(*item.leaf(0)))
                                  : kNoSymbol;
      const bool parameter = formal != kNoSymbol && isParameter(symbols_[formal].kind);
      Occurrence* const added =
          add(*item.leaf(0), parameter ? formal : kNoSymbol, Lookup::Qualified);
      if (added != nullptr) added->writes = !argument.output;
      const bool inOut = parameter && symbols_[formal].kind == SymbolKind::InOut;
      walkExpr(exprAt(item, 1), argument.output || inOut);
    }
  }

  const AnalysedProgram& program_;
  const Symbols& symbols_;
  std::vector<Occurrence>& found_;
  SymbolId unit_ = kNoSymbol;
};

bool isBefore(const Occurrence& a, const Occurrence& b) {
  const vel::TextLocation first = a.range.begin;
  const vel::TextLocation second = b.range.begin;
  return first.file() != second.file() ? first.file() < second.file()
                                       : first.offset() < second.offset();
}

std::uint32_t endOf(const Occurrence& occurrence) {
  return occurrence.range.begin.offset() + occurrence.range.length;
}

}  // namespace

Occurrences::Occurrences(const AnalysedProgram& program, const Symbols& symbols) {
  Walk(program, symbols, all_).run();
  std::stable_sort(all_.begin(), all_.end(), isBefore);
  // A node that the analysis has replaced may be reached twice.
  const auto overlaps = [](const Occurrence& a, const Occurrence& b) {
    return a.range.begin.file() == b.range.begin.file() && b.range.begin.offset() < endOf(a);
  };
  all_.erase(std::unique(all_.begin(), all_.end(), overlaps), all_.end());
}

const Occurrence* Occurrences::at(vel::TextLocation place) const {
  Occurrence key;
  key.range.begin = place;
  auto behind = std::upper_bound(all_.begin(), all_.end(), key, isBefore);
  if (behind == all_.begin()) return nullptr;
  --behind;
  const bool contains =
      behind->range.begin.file() == place.file() && place.offset() <= endOf(*behind);
  return contains ? &*behind : nullptr;
}

std::vector<const Occurrence*> Occurrences::of(SymbolId symbol) const {
  std::vector<const Occurrence*> result;
  for (const Occurrence& occurrence : all_) {
    if (occurrence.symbol == symbol) result.push_back(&occurrence);
  }
  return result;
}

}  // namespace refhost
