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

class Spelling;

class SymbolTable final {
 public:
  SymbolTable();

  // Makes forget() keep the present entries: the elementary types and the operators.
  void keep();
  // Removes all entries of a program.
  void forget();

  vel::Symbol* find(std::string_view name, std::string_view scope, vel::Symbol::Type kind) const;
  bool add(std::unique_ptr<vel::SymbolPOU> unit);

  // Null when `type` is not elementary.
  vel::SymbolDataType* elementary(BasicDataType type) const;
  // The data type of this name; null for none.
  vel::SymbolDataType* dataType(std::string_view name) const;
  vel::SymbolDataType* stringType(BasicDataType type, int length);

  // Anonymous types that are the same are one object.
  ArrayType* arrayType(vel::SymbolDataType* element, Expr* elementInitial,
                       const std::vector<Bounds>& bounds);
  OpenArrayType* openArrayType(vel::SymbolDataType* element, int dimensions);
  PointerType* pointerType(vel::SymbolDataType* target, bool isReference);
  // Adds a type that is different from all others, under its name.
  template <typename T>
  T* addType(std::unique_ptr<T> type) {
    T* const added = type.get();
    types_.emplace(added->name(), added);
    ownedTypes_.push_back(std::move(type));
    return added;
  }
  // Adds another name, which must outlive the table.
  void addAlias(std::string_view name, vel::SymbolDataType* type) { types_.emplace(name, type); }
  // In the order in which they were added.
  const std::vector<std::unique_ptr<vel::SymbolDataType>>& ownedTypes() const {
    return ownedTypes_;
  }

  // A value of a TYPE declaration. Null when there is none, and when several enumerations have a
  // value of this name.
  NamedValue* namedValue(std::string_view name) const;
  void addNamedValue(NamedValue* value);
  // False when no name is, which spares the question for each.
  bool hasAmbiguous() const { return hasAmbiguous_; }
  bool isAmbiguous(std::string_view name) const {
    return namedValues_.count(name) != 0 && namedValue(name) == nullptr;
  }
  // For suggestions.
  std::vector<const EnumType*> enumerations() const;
  // Calls `visit` with the name of each value and the value, null for one of several enumerations.
  template <typename Visit>
  void forEachValue(Visit visit) const {
    for (const auto& [name, value] : namedValues_) visit(name, value);
  }
  void offerTypes(Spelling& spelling) const;
  NamedValue* null() const { return null_.get(); }

  // Adds an access by its source text, by which operators look up their operands.
  void addAccess(const std::string& scope, const std::string& text, vel::SymbolDataType* type);

  // Null when there is no such unit in the program.
  UnitSymbol* unit(std::string_view name) const;
  // A unit that contains the global variables; null when there are none.
  UnitSymbol* globals() const { return globals_.get(); }
  void setGlobals(std::unique_ptr<UnitSymbol> globals) { globals_ = std::move(globals); }
  // Null when there is no such global variable.
  VarSymbol* global(std::string_view name) const;
  // Keeps a variable that has no place because its name is taken, for the expressions that refer to
  // it.
  void keepUndeclared(std::unique_ptr<VarSymbol> variable) {
    undeclared_.push_back(std::move(variable));
  }
  // The program's own units in order of declaration, without operators.
  const std::vector<UnitSymbol*>& units() const { return programUnits_; }

 private:
  FoldedMap<vel::SymbolDataType*> types_;
  FoldedMap<vel::SymbolPOU*> units_;
  std::vector<UnitSymbol*> programUnits_;
  FoldedMap<UnitSymbol*> unitsByName_;  // those of programUnits_
  std::unique_ptr<UnitSymbol> globals_;
  std::vector<std::unique_ptr<VarSymbol>> undeclared_;
  std::vector<std::unique_ptr<vel::SymbolDataType>> ownedTypes_;
  std::vector<std::unique_ptr<vel::SymbolPOU>> ownedUnits_;
  std::map<std::pair<BasicDataType, int>, std::unique_ptr<StringType>> stringTypes_;
  // Anonymous types by the properties that distinguish them.
  struct Unnamed {
    std::map<std::tuple<const vel::SymbolDataType*, const Expr*, std::vector<Bounds>>, ArrayType*>
        arrays;
    std::map<std::pair<const vel::SymbolDataType*, int>, OpenArrayType*> openArrays;
    std::map<std::pair<const vel::SymbolDataType*, bool>, PointerType*> pointers;
  } unnamed_;
  FoldedMap<NamedValue*> namedValues_;  // null for a value of several enumerations
  bool hasAmbiguous_ = false;
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
