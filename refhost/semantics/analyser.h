// Semantic analysis: declares what the units declare, gives every expression its
// type, asks the operators to check their calls, and judges assignments.
#pragma once

#include <vector>

#include "refhost/semantics/parts.h"

namespace refhost {

class Analyser {
 public:
  Analyser(Services& services, Tree& tree, Prelude& prelude, std::vector<vel::VELMessage>& messages)
      : context_(services, tree, prelude, messages), parts_(context_) {}

  // Analyses every unit of the tree.
  void run();

 private:
  void analyseUnit(UnitSymbol& unit);

  Context context_;
  Parts parts_;
};

}  // namespace refhost
