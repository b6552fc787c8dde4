// The host's symbol table.
#pragma once

#include "host/export.h"
#include "host/symbol.h"

namespace vel {

class VEL_HOST_API SymbolManager {
 public:
  virtual ~SymbolManager();

  // The symbol of that name and kind, in any letter case. `scope` is the name of a
  // program unit, or empty for the names that every unit sees. Null when absent.
  Symbol* symbol(const char* name, const char* scope, Symbol::Type kind);
  // Takes `pou` on success. On false, for instance when the name is taken, the
  // caller keeps it. The plugin always passes -1.
  bool addPOU(SymbolPOU* pou, int index);
};

}  // namespace vel
