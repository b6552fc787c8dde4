// The names in the sources and the symbols that they refer to.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "refhost/editor/symbols.h"

namespace refhost {

struct Occurrence {
  // How the name is found, which decides what could hide it.
  enum class Lookup : std::uint8_t {
    Name,       // in the unit, then among global variables, values and types
    Callee,     // the same for the name in front of '('
    Type,       // among types and units only
    Qualified,  // behind what it belongs to: members, named arguments, `Color#Red`, tasks
    Path,       // the first names of an entry in VAR_CONFIG
  };

  SourceRange range;
  SymbolId symbol = kNoSymbol;
  SymbolId unit = kNoSymbol;  // in which the name stands; kNoSymbol outside of units
  Lookup lookup = Lookup::Name;
  bool declares = false;
  bool writes = false;  // it or a part of it gets a value
};

// Those of the files that the user can open, by file and offset. No two of them overlap.
class Occurrences {
 public:
  Occurrences(const AnalysedProgram& program, const Symbols& symbols);

  const std::vector<Occurrence>& all() const { return all_; }
  // The one that contains the offset or ends there; null for none.
  const Occurrence* at(vel::TextLocation place) const;
  // Those of one symbol, in order.
  std::vector<const Occurrence*> of(SymbolId symbol) const;

 private:
  std::vector<Occurrence> all_;
};

}  // namespace refhost
