// The C names of a program's symbols.
#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "refhost/services/configuration.h"
#include "refhost/services/derived_types.h"

namespace refhost {

struct UnitNames {
  std::string name;  // of the function or the unit's structure
  std::string init;
  std::string body;  // of a function block
  std::string scan;  // of a program
  std::string data;  // of a program: the object that contains its variables
};

struct ConfigurationNames {
  std::string init;
  std::string tasks;  // the table
  struct Row {
    std::string run;
    std::string single;  // empty for none
  };
  std::vector<Row> rows;  // of the schedule
};

struct TypeNames {  // of a structure or an array
  std::string name;
  std::string init;  // of a structure: the function that sets its initial values
};

// The symbols whose C names a text may contain.
struct NamedSymbols {
  std::unordered_set<const UnitSymbol*> units;
  std::unordered_set<const vel::SymbolDataType*> types;  // those of variables included
};

class SymbolNames {
 public:
  // Empty for a symbol without a name.
  const std::string& of(const VarSymbol& variable) const {
    if (record_ != nullptr && variable.dataType() != nullptr) {
      record_->types.insert(variable.dataType());
    }
    return find(variables_, variable);
  }
  const UnitNames& of(const UnitSymbol& unit) const {
    if (record_ != nullptr) record_->units.insert(&unit);
    return find(units_, unit);
  }
  const TypeNames& of(const vel::SymbolDataType& type) const {
    if (record_ != nullptr) record_->types.insert(&type);
    return find(types_, type);
  }
  // `init`, `scan` and `data`.
  const UnitNames& of(const ProgramInstance& instance) const { return find(instances_, instance); }

  std::string& operator[](const VarSymbol& variable) { return variables_[&variable]; }
  UnitNames& operator[](const UnitSymbol& unit) { return units_[&unit]; }
  TypeNames& operator[](const vel::SymbolDataType& type) { return types_[&type]; }
  UnitNames& operator[](const ProgramInstance& instance) { return instances_[&instance]; }

  // From here on all symbols whose names are asked for are added to `record`; null for none.
  void recordIn(NamedSymbols* record) { record_ = record; }

  ConfigurationNames configuration;  // empty without program instances

  void clear() { *this = {}; }

 private:
  template <typename Symbol, typename Names>
  static const Names& find(const std::unordered_map<const Symbol*, Names>& map,
                           const Symbol& symbol) {
    static const Names kNone;
    const auto found = map.find(&symbol);
    return found != map.end() ? found->second : kNone;
  }

  NamedSymbols* record_ = nullptr;
  std::unordered_map<const VarSymbol*, std::string> variables_;
  std::unordered_map<const UnitSymbol*, UnitNames> units_;
  std::unordered_map<const vel::SymbolDataType*, TypeNames> types_;
  std::unordered_map<const ProgramInstance*, UnitNames> instances_;
};

}  // namespace refhost
