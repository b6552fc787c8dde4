#include "refhost/editor/fixes.h"

#include "refhost/editor/conversion_fixes.h"

namespace refhost {

std::vector<Fix> fixesFor(const AnalysedProgram& program, const Diagnostic& message) {
  std::vector<Fix> fixes = message.fixes;
  const bool own = program.isOpenable(message.range.begin.file());
  if (!own) return fixes;
  addConversions(program, message, fixes);
  return fixes;
}

}  // namespace refhost
