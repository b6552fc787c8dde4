#include "hostkit/symbol_table.h"

#include <utility>

#include "hostkit/elementary_types.h"

namespace hostkit {

using vel::Symbol;

namespace {

template <class Map>
auto lookUp(const Map& map, std::string_view name) -> typename Map::mapped_type {
  const auto found = map.find(name);
  return found != map.end() ? found->second : nullptr;
}

}  // namespace

SymbolTable::SymbolTable() {
  for (const ElementaryType& row : elementaryTypes()) {
    ownedTypes_.push_back(std::make_unique<vel::SymbolDataType>(row.name, row.type));
    types_.emplace(row.name, ownedTypes_.back().get());
  }
  types_.emplace("TIME_OF_DAY", types_.at("TOD"));
  types_.emplace("DATE_AND_TIME", types_.at("DT"));
}

Symbol* SymbolTable::find(const char* name, const char* unit, Symbol::Type kind) const {
  const auto wanted = [kind](Symbol::Type each) { return kind == Symbol::All || kind == each; };
  if (wanted(Symbol::Variable)) {
    for (const char* const owner : {unit, ""}) {
      if (Symbol* const found = variable(name, owner)) return found;
    }
  }
  if (wanted(Symbol::DataType)) {
    if (Symbol* const found = type(name)) return found;
  }
  return wanted(Symbol::Pou) ? lookUp(units_, name) : nullptr;
}

vel::SymbolVar* SymbolTable::variable(std::string_view name, std::string_view unit) const {
  const auto own = variables_.find(std::string(unit));
  vel::SymbolVar* const found = own != variables_.end() ? lookUp(own->second, name) : nullptr;
  if (found != nullptr) return found;
  const vel::SymbolPOU* const owner = lookUp(units_, unit);
  return owner != nullptr ? owner->param(std::string(name)) : nullptr;
}

vel::SymbolDataType* SymbolTable::type(std::string_view name) const { return lookUp(types_, name); }

bool SymbolTable::addUnit(vel::SymbolPOU* unit) {
  if (types_.count(unit->name()) != 0 || units_.count(unit->name()) != 0) return false;
  ownedUnits_.emplace_back(unit);
  units_.emplace(unit->name(), unit);
  return true;
}

vel::SymbolVar* SymbolTable::addVariable(const std::string& unit,
                                         std::unique_ptr<vel::SymbolVar> variable) {
  vel::SymbolVar* const added = variable.get();
  if (this->variable(added->name(), unit) != nullptr) return nullptr;
  variables_[unit].emplace(added->name(), added);
  ownedVariables_.push_back(std::move(variable));
  return added;
}

}  // namespace hostkit
