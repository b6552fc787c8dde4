// Variables AT %Q*, whose places VAR_CONFIG gives. Each instance of a function block and each
// program instance has places of its own. They are numbered in order of declaration, those of an
// instance within a variable where the variable stands.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

#include "refhost/services/derived_types.h"

namespace refhost {

class OpenPlaces {
 public:
  // How many there are in a unit, in a variable of a type, in the variables before `variable` in
  // its unit or structure. All units must have been declared.
  std::uint64_t countIn(const UnitSymbol& unit);
  std::uint64_t countIn(const vel::SymbolDataType* type);
  std::uint64_t countBefore(const VarSymbol& variable, const vel::SymbolDataType* structure);

 private:
  using Variables = std::vector<std::unique_ptr<VarSymbol>>;
  std::uint64_t countIn(const Variables& variables, const VarSymbol* end);

  std::unordered_map<const vel::SymbolDataType*, std::uint64_t> known_;
};

// What VAR_CONFIG says.
struct ConfiguredVariables {
  struct Step {
    const VarSymbol* variable;  // null for an element
    std::int64_t element;

    bool operator==(const Step& other) const {
      return variable == other.variable && element == other.element;
    }
  };
  struct Initial {
    std::vector<Step> path;  // from the variable of the unit on
    vel::SymbolDataType* type;
    const Expr* value;
  };
  // Of an instance of a PROGRAM, of a PROGRAM without instances, or of the global variables.
  struct Root {
    std::map<std::uint64_t, std::uint32_t> places;  // raw addresses by number
    std::vector<Initial> initials;                  // in source order
  };

  OpenPlaces open;
  std::unordered_map<const void*, Root> roots;  // by ProgramInstance or UnitSymbol
};

}  // namespace refhost
