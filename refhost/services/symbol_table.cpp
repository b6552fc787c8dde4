#include "refhost/services/symbol_table.h"

#include <algorithm>

#include "refhost/spelling.h"

namespace refhost {

using vel::Symbol;

namespace {

// Finds members too: `timer.Q`.
VarSymbol* findVariable(const UnitSymbol* unit, std::string_view name) {
  std::size_t dot = name.find('.');
  VarSymbol* variable = unit != nullptr ? unit->visible(name.substr(0, dot)) : nullptr;
  while (variable != nullptr && dot != std::string_view::npos) {
    name.remove_prefix(dot + 1);
    dot = name.find('.');
    variable = memberOf(variable->dataType(), name.substr(0, dot));
  }
  return variable;
}

// The separator cannot be part of a scope's name. The lookup ignores letter case.
std::string accessKey(std::string_view scope, std::string_view text) {
  std::string key(scope);
  key.append("\n").append(text);
  std::transform(key.begin(), key.end(), key.begin(), toUpper);
  return key;
}

}  // namespace

SymbolTable::SymbolTable() {
  for (const ElementaryType& row : elementaryTypes()) {
    if (isText(row.type)) {
      ownedTypes_.push_back(std::make_unique<StringType>(row.type, StringType::kDefaultLength));
    } else {
      ownedTypes_.push_back(std::make_unique<vel::SymbolDataType>(row.name, row.type));
    }
    types_.emplace(row.name, ownedTypes_.back().get());
  }
  types_.emplace("TIME_OF_DAY", types_.at("TOD"));
  types_.emplace("DATE_AND_TIME", types_.at("DT"));
  null_ = std::make_unique<NamedValue>("NULL", pointerType(nullptr, false), 0);
}

void SymbolTable::keep() {
  kept_ = {types_, units_, unnamed_, ownedTypes_.size(), ownedUnits_.size()};
}

void SymbolTable::forget() {
  types_ = kept_.types;
  units_ = kept_.units;
  programUnits_.clear();
  unitsByName_.clear();
  globals_.reset();
  undeclared_.clear();
  namedValues_.clear();
  hasAmbiguous_ = false;
  accesses_.clear();
  ownedUnits_.resize(kept_.ownedUnits);
  ownedTypes_.resize(kept_.ownedTypes);
  stringTypes_.clear();
  unnamed_ = kept_.unnamed;
}

Symbol* SymbolTable::find(std::string_view name, std::string_view scope, Symbol::Type kind) const {
  const auto wanted = [kind](Symbol::Type type) { return kind == Symbol::All || kind == type; };
  // An access carries its own type.
  const auto access =
      kind == Symbol::All ? accesses_.find(accessKey(scope, name)) : accesses_.end();
  if (access != accesses_.end()) return access->second.get();
  if (wanted(Symbol::Variable) && !scope.empty()) {
    if (VarSymbol* const variable = findVariable(unit(scope), name)) return variable;
    if (VarSymbol* const variable = findVariable(globals(), name)) return variable;
  }
  if (wanted(Symbol::Typed)) {
    for (const UnitSymbol* within = unit(scope); within != nullptr; within = within->outer) {
      const auto local = within->namedValues.find(name);
      if (local != within->namedValues.end()) return local->second;
    }
    if (NamedValue* const value = namedValue(name)) return value;
  }
  if (wanted(Symbol::DataType)) {
    const auto found = types_.find(name);
    if (found != types_.end()) return found->second;
  }
  if (wanted(Symbol::Pou)) {
    const auto found = units_.find(name);
    if (found != units_.end()) return found->second;
  }
  return nullptr;
}

bool SymbolTable::add(std::unique_ptr<vel::SymbolPOU> unit) {
  if (types_.count(unit->name()) != 0) return false;
  if (!units_.emplace(unit->name(), unit.get()).second) return false;
  if (auto* const own = dynamic_cast<UnitSymbol*>(unit.get())) {
    programUnits_.push_back(own);
    unitsByName_.emplace(own->name(), own);
  }
  ownedUnits_.push_back(std::move(unit));
  return true;
}

vel::SymbolDataType* SymbolTable::elementary(BasicDataType type) const {
  const ElementaryType* const row = elementaryType(type);
  return row != nullptr && row->name != nullptr ? types_.at(row->name) : nullptr;
}

vel::SymbolDataType* SymbolTable::dataType(std::string_view name) const {
  const auto found = types_.find(name);
  if (found != types_.end()) return found->second;
  const UnitSymbol* const block = unit(name);
  return block != nullptr ? block->fbType() : nullptr;
}

vel::SymbolDataType* SymbolTable::stringType(BasicDataType type, int length) {
  std::unique_ptr<StringType>& known = stringTypes_[{type, length}];
  if (known == nullptr) known = std::make_unique<StringType>(type, length);
  return known.get();
}

ArrayType* SymbolTable::arrayType(vel::SymbolDataType* element, Expr* elementInitial,
                                  const std::vector<Bounds>& bounds) {
  ArrayType*& known = unnamed_.arrays[{element, elementInitial, bounds}];
  if (known == nullptr) {
    known = addType(std::make_unique<ArrayType>(element, bounds, elementInitial));
  }
  return known;
}

OpenArrayType* SymbolTable::openArrayType(vel::SymbolDataType* element, int dimensions) {
  OpenArrayType*& known = unnamed_.openArrays[{element, dimensions}];
  if (known == nullptr) known = addType(std::make_unique<OpenArrayType>(element, dimensions));
  return known;
}

PointerType* SymbolTable::pointerType(vel::SymbolDataType* target, bool isReference) {
  PointerType*& known = unnamed_.pointers[{target, isReference}];
  if (known == nullptr) known = addType(std::make_unique<PointerType>(target, isReference));
  return known;
}

NamedValue* SymbolTable::namedValue(std::string_view name) const {
  const auto found = namedValues_.find(name);
  return found != namedValues_.end() ? found->second : nullptr;
}

void SymbolTable::addNamedValue(NamedValue* value) {
  const auto [entry, isNew] = namedValues_.emplace(value->name(), value);
  if (isNew) return;
  entry->second = nullptr;
  hasAmbiguous_ = true;
}

void SymbolTable::addAccess(const std::string& scope, const std::string& text,
                            vel::SymbolDataType* type) {
  accesses_[accessKey(scope, text)] = std::make_unique<vel::SymbolTyped>(text, type);
}

std::vector<const EnumType*> SymbolTable::enumerations() const {
  std::vector<const EnumType*> found;
  for (const auto& [name, type] : types_) {
    const auto* const enumeration = dynamic_cast<const EnumType*>(type);
    if (enumeration != nullptr && !isAnonymous(*type)) found.push_back(enumeration);
  }
  return found;
}

void SymbolTable::offerTypes(Spelling& spelling) const {
  for (const auto& [name, type] : types_) {
    if (!isAnonymous(*type) && type != null_->dataType()) spelling.offer(name);
  }
}

VarSymbol* SymbolTable::global(std::string_view name) const {
  return globals_ != nullptr ? globals_->variable(name) : nullptr;
}

UnitSymbol* SymbolTable::unit(std::string_view name) const {
  const auto found = unitsByName_.find(name);
  return found != unitsByName_.end() ? found->second : nullptr;
}

}  // namespace refhost
