// The reference host's symbol table.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

#include "hostkit/folding.h"
#include "refhost/services/derived_types.h"

namespace refhost {

class SymbolTable final {
 public:
  SymbolTable();

  // Makes forget() keep what the table holds now.
  void keep();
  // Forgets all that a program has declared.
  void forget();

  vel::Symbol* find(std::string_view name, std::string_view scope, vel::Symbol::Type kind) const;
  bool add(std::unique_ptr<vel::SymbolPOU> unit);

  // The data type of a number; null when there is none.
  vel::SymbolDataType* elementary(BasicDataType type) const;
  // The data type of a name: elementary, or a function block's.
  vel::SymbolDataType* dataType(std::string_view name) const;
  vel::SymbolDataType* stringType(BasicDataType type, int length);

  // Types that are the same are one object; names of types are kept with them.
  ArrayType* arrayType(vel::SymbolDataType* element, Expr* elementInitial,
                       const std::vector<Bounds>& bounds);
  PointerType* pointerType(vel::SymbolDataType* target, bool isReference);
  // Takes a type that no other is the same as, and makes its name known.
  template <typename T>
  T* addType(std::unique_ptr<T> type) {
    T* const added = type.get();
    types_.emplace(added->name(), added);
    ownedTypes_.push_back(std::move(type));
    return added;
  }
  // Makes `name`, which must outlive the table, stand for `type` too.
  void addAlias(std::string_view name, vel::SymbolDataType* type) { types_.emplace(name, type); }
  // In the order in which they were added.
  const std::vector<std::unique_ptr<vel::SymbolDataType>>& ownedTypes() const {
    return ownedTypes_;
  }

  // A value of a declared enumeration that the whole program can name. Null when there is
  // none, and when several enumerations have one of that name.
  NamedValue* namedValue(std::string_view name) const;
  void addNamedValue(NamedValue* value);
  bool isAmbiguous(std::string_view name) const {
    return namedValues_.count(name) != 0 && namedValue(name) == nullptr;
  }
  NamedValue* null() const { return null_.get(); }

  // Makes an access known by its source text, for operators that look operands up by it.
  void addAccess(const std::string& scope, const std::string& text, vel::SymbolDataType* type);

  // Null when the name is no unit of the program.
  UnitSymbol* unit(std::string_view name) const;
  // The global variables, as those of a unit that no source declares; null when there are
  // none.
  UnitSymbol* globals() const { return globals_.get(); }
  void setGlobals(std::unique_ptr<UnitSymbol> globals) { globals_ = std::move(globals); }
  // Null when there is no global variable of the name.
  VarSymbol* global(std::string_view name) const;
  // The program's own units in order of declaration, without operators.
  const std::vector<UnitSymbol*>& units() const { return programUnits_; }

 private:
  FoldedMap<vel::SymbolDataType*> types_;
  FoldedMap<vel::SymbolPOU*> units_;
  std::vector<UnitSymbol*> programUnits_;
  FoldedMap<UnitSymbol*> unitsByName_;  // the same
  std::unique_ptr<UnitSymbol> globals_;
  std::vector<std::unique_ptr<vel::SymbolDataType>> ownedTypes_;
  std::vector<std::unique_ptr<vel::SymbolPOU>> ownedUnits_;
  std::map<std::pair<BasicDataType, int>, std::unique_ptr<StringType>> stringTypes_;
  // Types without a name, by what makes them the same.
  struct Unnamed {
    std::map<std::tuple<const vel::SymbolDataType*, const Expr*, std::vector<Bounds>>, ArrayType*>
        arrays;
    std::map<std::pair<const vel::SymbolDataType*, bool>, PointerType*> pointers;
  } unnamed_;
  FoldedMap<NamedValue*> namedValues_;  // null: of several enumerations
  std::unique_ptr<NamedValue> null_;
  std::unordered_map<std::string, std::unique_ptr<vel::SymbolTyped>> accesses_;

  struct {
    FoldedMap<vel::SymbolDataType*> types;
    FoldedMap<vel::SymbolPOU*> units;
    Unnamed unnamed;
    std::size_t ownedTypes = 0;
    std::size_t ownedUnits = 0;
  } kept_;
};

}  // namespace refhost
