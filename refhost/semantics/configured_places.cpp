#include "refhost/semantics/configured_places.h"

#include <algorithm>

#include "hostkit/folding.h"
#include "refhost/semantics/constants.h"
#include "refhost/semantics/parts.h"
#include "refhost/spelling.h"

namespace refhost {

using vel::TreeBuilder;

namespace {

// From the base of the accesses on.
std::vector<Expr*> namesOf(Expr& path) {
  std::vector<Expr*> names{&path};
  while (isAccess(names.back()->kind)) names.push_back(static_cast<Expr*>(names.back()->leaf(0)));
  std::reverse(names.begin(), names.end());
  return names;
}

// Empty for an element.
std::string_view nameOf(const Expr& expr) {
  if (expr.kind == ExprKind::Variable) return TreeBuilder::source(expr);
  return expr.kind == ExprKind::Member ? TreeBuilder::source(*expr.leaf(1)) : std::string_view();
}

bool isOpenAddress(std::string_view text) {
  constexpr std::string_view kAreas = "MIQ";
  constexpr std::string_view kSizes = "XBWDL*";
  return text.size() >= 3 && text.size() <= 4 && text[0] == '%' && text.back() == '*' &&
         kAreas.find(toUpper(text[1])) != std::string_view::npos &&
         kSizes.find(toUpper(text[2])) != std::string_view::npos;
}

// True if the address is in the area, and of the size, that the open one names.
bool isFor(const vel::HeapAddress& address, std::string_view open) {
  constexpr std::uint32_t kOfInputs[] = {2, 10};
  constexpr std::uint32_t kOfOutputs[] = {3, 11};
  const auto isIn = [&address](const std::uint32_t(&areas)[2]) {
    return address.area == areas[0] || address.area == areas[1];
  };
  const char area = isIn(kOfInputs) ? 'I' : isIn(kOfOutputs) ? 'Q' : 'M';
  if (toUpper(open[1]) != area) return false;
  constexpr std::pair<char, std::uint32_t> kSizes[] = {{'B', 1}, {'W', 2}, {'D', 4}, {'L', 8}};
  const char size = toUpper(open[2]);
  if (size == '*') return true;
  if (size == 'X' || address.isBitMode()) return size == 'X' && address.isBitMode();
  return std::any_of(std::begin(kSizes), std::end(kSizes), [&](const auto& row) {
    return row.first == size && row.second == address.unitSize;
  });
}

}  // namespace

void ConfiguredPlaces::declareOpen(VarSymbol& variable, const ASTNode& address) {
  if (!isOpenAddress(TreeBuilder::source(address))) {
    parts_.locations.sayInvalid(address);
    refused_.insert(&variable);
  } else if (variable.owner->isTest()) {
    say(address, message::kNotSupported,
        "Open addresses (" + std::string(TreeBuilder::source(address)) +
            ") of variables of tests are");
  } else if (variable.owner->type() == vel::POUType::Function || variable.role == Role::Temp ||
             variable.indirect) {
    say(address, message::kNotKept, variable.name());
  } else {
    variable.openAddress = &address;
    variable.placedByInstance = variable.owner != services_.symbols.globals();
  }
}

void ConfiguredPlaces::analyse(bool complete) {
  complete_ = complete;
  SymbolTable& symbols = services_.symbols;
  UnitSymbol empty(&services_, tree_.make<Unit>("", vel::POUType::Program));
  context_.enter(&empty);
  for (const VarBlock* const block : tree_.configured) {
    for (int i = 0; i < block->leavesCount(); ++i) {
      analyseEntry(static_cast<VarDecl&>(*block->leaf(i)));
    }
  }
  for (const UnitSymbol* const unit : symbols.units()) refuseTemporaries(*unit);
  if (!complete_) return;
  for (const ProgramInstance& instance : services_.configuration.instances) {
    const std::string name = services_.configuration.displayName(instance);
    reportMissing(&instance, *instance.program, name, 0);
  }
  const bool configured = !services_.configuration.instances.empty();
  for (const UnitSymbol* const unit : symbols.units()) {
    const bool isRoot = unit->type() == vel::POUType::Program && !configured && !unit->isTest();
    if (isRoot) reportMissing(unit, *unit, unit->name(), 0);
  }
  if (symbols.globals() != nullptr) reportMissing(symbols.globals(), *symbols.globals(), {}, 0);
}

void ConfiguredPlaces::analyseEntry(VarDecl& entry) {
  auto& path = static_cast<Expr&>(*entry.leaf(VarDecl::kFirstName));
  ASTNode* const spec = entry.leaf(VarDecl::kType);
  const ASTNode* const address = entry.leaf(VarDecl::kAddress);
  Type* const type = spec != nullptr ? parts_.types.resolve(*spec).type : nullptr;
  Target target;
  if (const Expr* const lost = follow(namesOf(path), target)) {
    lost_.push_back(nameOf(path));
    if (!complete_) return;
    Remarks& said = say(path, message::kNothingToConfigure, TreeBuilder::source(path));
    suggest(said, *lost, target);
    return;
  }
  if (type == nullptr || target.type == nullptr) {
    if (address != nullptr) entryOf(target) = &path;
    return;
  }
  if (!sameType(*type, *target.type)) {
    say(*spec, message::kConfiguredType, TreeBuilder::source(path), displayName(target.type),
        displayName(type));
    if (address != nullptr) entryOf(target) = &path;
    return;
  }
  if (address != nullptr) place(path, *address, target);
  if (entry.leaf(VarDecl::kInitial) == nullptr) return;
  if (target.variable->constant) {
    say(path, message::kNotWritable, TreeBuilder::source(path));
    return;
  }
  parts_.initials.analyseInitial(type, entry, VarDecl::kInitial);
  auto& initials = services_.configured.roots[target.root].initials;
  for (const auto& other : initials) {
    if (other.path != target.path) continue;
    say(path, message::kInitialTwice, TreeBuilder::source(path))
        .note(rangeOf(*other.value), "first given here");
    return;
  }
  initials.push_back(
      {target.path, target.type, static_cast<const Expr*>(entry.leaf(VarDecl::kInitial))});
}

// Returns how many of the names lead to the unit, whose variable the next one is.
std::size_t ConfiguredPlaces::findRoot(const std::vector<Expr*>& names, Target& target) const {
  const Configuration& configuration = services_.configuration;
  const std::string_view first = nameOf(*names[0]);
  const std::string_view second = names.size() > 1 ? nameOf(*names[1]) : std::string_view();
  const bool inResource =
      std::any_of(tree_.resources.begin(), tree_.resources.end(),
                  [first](const Text* name) { return equalIgnoringCase(name->text(), first); });
  for (const ProgramInstance& instance : configuration.instances) {
    const bool whole = equalIgnoringCase(instance.resource, first) &&
                       equalIgnoringCase(instance.name, second) && !instance.resource.empty();
    if (!whole && !equalIgnoringCase(instance.name, first)) continue;
    target.root = &instance;
    target.unit = instance.program;
    return whole ? 2 : 1;
  }
  for (const std::size_t at : {std::size_t{0}, std::size_t{1}}) {
    if (at == 1 && !inResource) break;
    const std::string_view name = at == 0 ? first : second;
    UnitSymbol* const unit = services_.symbols.unit(name);
    if (unit != nullptr && unit->type() == vel::POUType::Program && !unit->instantiated) {
      target.root = target.unit = unit;
      return at + 1;
    }
    if (services_.symbols.global(name) != nullptr) {
      target.root = target.unit = services_.symbols.globals();
      return at;
    }
  }
  return names.size();
}

const Expr* ConfiguredPlaces::follow(const std::vector<Expr*>& names, Target& target) {
  for (std::size_t i = findRoot(names, target); i < names.size(); ++i) {
    const std::string_view name = nameOf(*names[i]);
    const bool found = name.empty() ? enterElement(*names[i], target) : enterMember(name, target);
    if (!found) return names[i];
    if (!name.empty()) names[i]->symbol = target.variable;
  }
  return target.variable != nullptr ? nullptr : names.front();
}

// The path is known up to the name at which it is lost.
void ConfiguredPlaces::suggest(Remarks& said, const Expr& lost, const Target& target) const {
  const std::string_view name = nameOf(lost);
  if (name.empty()) return;
  const SourceRange where = lost.kind == ExprKind::Member ? rangeOf(*lost.leaf(1)) : rangeOf(lost);
  const UnitSymbol* const globals = services_.symbols.globals();
  const UnitSymbol* const unit = target.root != nullptr ? target.unit : globals;
  if (target.root != nullptr && unit == nullptr) {
    return parts_.suggestions.addMember(said, where, name, target.type);
  }
  Spelling spelling(name);
  if (unit != nullptr) {
    for (const auto& variable : unit->variables()) {
      if (variable->role != Role::EdgeState) spelling.offer(variable->name());
    }
  }
  if (target.root == nullptr) {
    for (const ProgramInstance& instance : services_.configuration.instances) {
      spelling.offer(instance.name);
    }
    for (const UnitSymbol* const program : services_.symbols.units()) {
      const bool isRoot = program->type() == vel::POUType::Program && !program->instantiated;
      if (isRoot) spelling.offer(program->name());
    }
    for (const Text* const resource : tree_.resources) spelling.offer(resource->text());
  }
  Suggestions::add(said, where, spelling);
}

bool ConfiguredPlaces::enterMember(std::string_view name, Target& target) {
  VarSymbol* const variable =
      target.unit != nullptr ? target.unit->variable(name) : memberOf(target.type, name);
  if (variable == nullptr || variable->indirect || variable->role == Role::Temp ||
      variable->role == Role::EdgeState) {
    return false;
  }
  target.number += services_.configured.open.countBefore(*variable, target.type);
  target.path.push_back({variable, 0});
  target.variable = variable;
  target.unit = nullptr;
  target.type = variable->dataType();
  return true;
}

bool ConfiguredPlaces::enterElement(Expr& element, Target& target) {
  const auto* const array = dynamic_cast<const ArrayType*>(target.type);
  if (element.kind != ExprKind::Element || array == nullptr ||
      static_cast<std::size_t>(element.leavesCount()) != array->bounds.size() + 1) {
    return false;
  }
  Integer index = 0;
  for (std::size_t i = 0; i < array->bounds.size(); ++i) {
    const Bounds& bounds = array->bounds[i];
    const auto subscript = parts_.expressions.requireConstant(element, static_cast<int>(i) + 1);
    if (!subscript || *subscript < bounds.low || *subscript > bounds.high) return false;
    index = index * bounds.count() + (*subscript - bounds.low);
  }
  const auto at = static_cast<std::int64_t>(index);
  target.type = array->element;
  target.number +=
      services_.configured.open.countIn(array->element) * static_cast<std::uint64_t>(at);
  target.path.push_back({nullptr, at});
  return true;
}

// The entry that places the variable; null for none.
const ASTNode*& ConfiguredPlaces::entryOf(const Target& target) {
  const bool byInstance = target.variable->placedByInstance;
  const void* const owner = byInstance ? target.root : target.variable;
  return entries_[owner][byInstance ? target.number : 0];
}

void ConfiguredPlaces::place(const ASTNode& path, const ASTNode& address, Target& target) {
  VarSymbol& variable = *target.variable;
  if (variable.openAddress == nullptr || target.type != variable.dataType()) {
    if (refused_.count(&variable) == 0) {
      say(address, message::kNotOpen, TreeBuilder::source(path));
    }
    return;
  }
  const ASTNode*& first = entryOf(target);
  if (first != nullptr) {
    say(path, message::kConfiguredTwice, TreeBuilder::source(path))
        .note(rangeOf(*first), "first placed here");
    return;
  }
  const std::size_t before = messages_.count();
  const auto parsed = parts_.locations.check(address, variable);
  first = &path;
  if (!parsed) return;
  const std::string_view open = TreeBuilder::source(*variable.openAddress);
  if (!hasErrorFrom(before) && !isFor(*parsed, open)) {
    say(address, message::kConfiguredArea, TreeBuilder::source(address), open, variable.name());
  }
  const vel::HeapRawAddr raw = services_.memory.raw(*parsed);
  if (!variable.placedByInstance) {
    variable.placeAt(*parsed, raw);
  } else {
    services_.configured.roots[target.root].places[target.number] = raw.address;
  }
}

void ConfiguredPlaces::refuseTemporaries(const UnitSymbol& unit) {
  for (const auto& variable : unit.variables()) {
    const bool kept =
        (unit.type() != vel::POUType::Function || unit.isTest()) && variable->role != Role::Temp;
    if (kept || variable->indirect || variable->declared == nullptr) continue;
    if (services_.configured.open.countIn(variable->dataType()) == 0) continue;
    say(*variable->declared, message::kNotKept, variable->name());
  }
}

void ConfiguredPlaces::placeInstances(const UnitSymbol& test) {
  auto& places = services_.configured.roots[&test].places;
  for (const auto& variable : test.variables()) {
    if (variable->indirect || variable->role == Role::Temp) continue;
    if (services_.configured.open.countIn(variable->dataType()) > kMostPlacesInTest) {
      say(*variable->declared, message::kNotSupported, "So many open addresses in a test are");
    } else {
      allocate(variable->dataType(), places);
    }
  }
}

// Appends a place for each open address in a variable of the type.
void ConfiguredPlaces::allocate(const Type* type, std::map<std::uint64_t, std::uint32_t>& places) {
  if (type == nullptr || services_.configured.open.countIn(type) == 0) return;
  if (const auto* const array = dynamic_cast<const ArrayType*>(type)) {
    for (std::int64_t i = 0; i < array->count(); ++i) allocate(array->element, places);
    return;
  }
  const auto* const instance = dynamic_cast<const InstanceType*>(type);
  const auto& variables = instance != nullptr ? instance->unit->variables()
                                              : static_cast<const StructType*>(type)->members();
  for (const auto& variable : variables) {
    if (variable->indirect || variable->role == Role::Temp) continue;
    if (!variable->placedByInstance) {
      allocate(variable->dataType(), places);
      continue;
    }
    const auto layout = services_.layouts.of(variable->dataType());
    const bool fits = layout && layout->size <= Layout::kMostBytes;
    const std::uint32_t byte =
        services_.memory
            .allocateState(fits ? static_cast<std::uint32_t>(layout->size) : 1,
                           fits ? static_cast<std::uint32_t>(layout->alignment) : 1)
            .address;
    places.emplace(places.size(), variable->isDeviceBit() ? 8 * byte : byte);
  }
}

// True if an entry whose path leads nowhere is probably that of the variable.
bool ConfiguredPlaces::isLost(const VarSymbol& variable) const {
  return std::any_of(lost_.begin(), lost_.end(), [&variable](std::string_view name) {
    Spelling spelling(name);
    spelling.offer(variable.name());
    return !spelling.best().empty();
  });
}

bool ConfiguredPlaces::reportMissing(const void* root, const UnitSymbol& unit,
                                     const std::string& path, std::uint64_t number) {
  bool missing = false;
  for (const auto& variable : unit.variables()) {
    if (variable->indirect || variable->role == Role::Temp) continue;
    const std::string name = path.empty() ? variable->name() : path + "." + variable->name();
    if (variable->openAddress == nullptr) {
      missing = reportMissing(root, variable->dataType(), name, number) || missing;
      number += services_.configured.open.countIn(variable->dataType());
      continue;
    }
    const bool byInstance = variable->placedByInstance;
    if (entries_[byInstance ? root : variable.get()][byInstance ? number : 0] == nullptr) {
      missing = true;
      if (!isLost(*variable) && reported_.insert(variable.get()).second) {
        say(*variable->declared, message::kNoPlace, variable->name(), name);
      }
    }
    if (byInstance) ++number;
  }
  return missing;
}

bool ConfiguredPlaces::reportMissing(const void* root, const Type* type, const std::string& path,
                                     std::uint64_t number) {
  OpenPlaces& open = services_.configured.open;
  if (open.countIn(type) == 0) return false;
  if (const auto* const instance = dynamic_cast<const InstanceType*>(type)) {
    return reportMissing(root, *instance->unit, path, number);
  }
  if (const auto* const array = dynamic_cast<const ArrayType*>(type)) {
    const std::uint64_t each = open.countIn(array->element);
    for (std::int64_t i = 0; i < array->count(); ++i, number += each) {
      const std::string name = path + "[" + textOf(array->bounds[0].low + i) + "]";
      if (reportMissing(root, array->element, name, number)) return true;
    }
    return false;
  }
  bool missing = false;
  for (const auto& member : static_cast<const StructType*>(type)->members()) {
    const std::string name = path + "." + member->name();
    missing = reportMissing(root, member->dataType(), name, number) || missing;
    number += open.countIn(member->dataType());
  }
  return missing;
}

}  // namespace refhost
