// Semantic analysis: enters declarations in the symbol table, gives every expression its type,
// has the operators check their calls, and checks assignments.
#pragma once

#include "refhost/semantics/parts.h"

namespace refhost {

class Analyser {
 public:
  Analyser(Services& services, Tree& tree, Prelude& prelude, Diagnostics& messages)
      : context_(services, tree, prelude, messages), parts_(context_) {}

  // With `tests` the unit tests are analysed, too, and PROGRAMs take the form that these need.
  void run(bool tests = false);
  // The names of units, types, values and global variables that the program uses and no file
  // declares, those that a part with syntax errors may declare included.
  const std::set<std::string>& missingNames() const { return context_.missing; }

 private:
  void analyseUnit(UnitSymbol& unit);

  Context context_;
  Parts parts_;
};

}  // namespace refhost
