// The reference host's symbol table.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "host/symbol_manager.h"
#include "refhost/services/folded.h"
#include "refhost/services/unit_symbol.h"

namespace refhost {

class SymbolTable final : public vel::SymbolManager {
 public:
  SymbolTable();

  vel::Symbol* find(std::string_view name, std::string_view scope, vel::Symbol::Type kind) const;
  bool add(std::unique_ptr<vel::SymbolPOU> unit);

  // The data type of a number; null when there is none.
  vel::SymbolDataType* elementary(BasicDataType type) const;
  // The data type of a name: elementary, or a function block's.
  vel::SymbolDataType* dataType(std::string_view name) const;
  vel::SymbolDataType* stringType(BasicDataType type, int length);
  // Null when the name is no unit of the program.
  UnitSymbol* unit(std::string_view name) const;
  // The program's own units in order of declaration, without operators.
  const std::vector<UnitSymbol*>& units() const { return programUnits_; }

 private:
  FoldedMap<vel::SymbolDataType*> types_;
  FoldedMap<vel::SymbolPOU*> units_;
  std::vector<UnitSymbol*> programUnits_;
  std::vector<std::unique_ptr<vel::SymbolDataType>> ownedTypes_;
  std::vector<std::unique_ptr<vel::SymbolPOU>> ownedUnits_;
  std::vector<std::unique_ptr<StringType>> stringTypes_;
};

}  // namespace refhost
