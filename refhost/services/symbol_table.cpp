#include "refhost/services/symbol_table.h"

namespace refhost {

using vel::Symbol;

namespace {

// Also what a member access names: `timer.Q`.
VarSymbol* findVariable(const UnitSymbol* unit, std::string_view name) {
  while (unit != nullptr) {
    const std::size_t dot = name.find('.');
    VarSymbol* const variable = unit->variable(name.substr(0, dot));
    if (dot == std::string_view::npos || variable == nullptr) return variable;
    const auto* const instance = dynamic_cast<const InstanceType*>(variable->dataType());
    unit = instance != nullptr ? instance->unit : nullptr;
    name.remove_prefix(dot + 1);
  }
  return nullptr;
}

}  // namespace

SymbolTable::SymbolTable() {
  for (const ElementaryType& row : elementaryTypes()) {
    if (row.name == nullptr) continue;
    if (isText(row.type)) {
      ownedTypes_.push_back(std::make_unique<StringType>(row.type, StringType::kDefaultLength));
    } else {
      ownedTypes_.push_back(std::make_unique<vel::SymbolDataType>(row.name, row.type));
    }
    types_.emplace(row.name, ownedTypes_.back().get());
  }
  types_.emplace("TIME_OF_DAY", types_.at("TOD"));
  types_.emplace("DATE_AND_TIME", types_.at("DT"));
}

Symbol* SymbolTable::find(std::string_view name, std::string_view scope, Symbol::Type kind) const {
  const auto wanted = [kind](Symbol::Type type) { return kind == Symbol::All || kind == type; };
  if (wanted(Symbol::Variable) && !scope.empty()) {
    if (VarSymbol* const variable = findVariable(unit(scope), name)) return variable;
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
  if (auto* const own = dynamic_cast<UnitSymbol*>(unit.get())) programUnits_.push_back(own);
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
  for (const auto& known : stringTypes_) {
    if (known->dataType() == type && known->length() == length) return known.get();
  }
  stringTypes_.push_back(std::make_unique<StringType>(type, length));
  return stringTypes_.back().get();
}

UnitSymbol* SymbolTable::unit(std::string_view name) const {
  const auto found = units_.find(name);
  return found != units_.end() ? dynamic_cast<UnitSymbol*>(found->second) : nullptr;
}

}  // namespace refhost

namespace vel {

SymbolManager::~SymbolManager() = default;

Symbol* SymbolManager::symbol(const char* name, const char* scope, Symbol::Type kind) {
  return static_cast<refhost::SymbolTable*>(this)->find(name, scope, kind);
}

bool SymbolManager::addPOU(SymbolPOU* pou, int) {
  auto& table = *static_cast<refhost::SymbolTable*>(this);
  if (pou == nullptr || table.find(pou->name(), {}, Symbol::All) != nullptr) return false;
  return table.add(std::unique_ptr<SymbolPOU>(pou));
}

}  // namespace vel
