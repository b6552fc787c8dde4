// The host's symbol table.
#pragma once

#include "host/export.h"
#include "host/symbol.h"

namespace vel {

class VEL_HOST_API SymbolManager {
 public:
  virtual ~SymbolManager();

  // Looks up a symbol by name, regardless of letter case, and kind. `scope` is the name of a
  // program unit, or empty for the global scope. Null when there is none.
  Symbol* symbol(const char* name, const char* scope, Symbol::Type kind);
  // Takes ownership of `pou` when it returns true. When it returns false, for instance because
  // the name is already declared, the caller keeps it. The plugin passes -1 as `index`.
  bool addPOU(SymbolPOU* pou, int index);
};

}  // namespace vel
