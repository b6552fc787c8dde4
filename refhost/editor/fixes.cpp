#include "refhost/editor/fixes.h"

#include <fmt/format.h>

#include "refhost/editor/argument_fixes.h"
#include "refhost/editor/conversion_fixes.h"
#include "refhost/editor/declaration_fixes.h"
#include "refhost/editor/value_fixes.h"
#include "refhost/syntax/insertions.h"

namespace refhost {

std::vector<Fix> fixesFor(const AnalysedProgram& program, const Diagnostic& message) {
  std::vector<Fix> fixes = message.fixes;
  const bool own = program.isOpenable(message.range.begin.file());
  if (!own) return fixes;
  addConversions(program, message, fixes);
  addDeclarations(program, message, fixes);
  addRemovals(program, message, fixes);
  addArguments(program, message, fixes);
  addTypes(program, message, fixes);
  return fixes;
}

Fix silencing(const SourceManager& sources, const Diagnostic& warning) {
  const vel::TextLocation at = warning.range.begin;
  const std::uint32_t end = endOfCode(sources.text(at.file()), at.offset());
  const std::string code = fmt::format("0x{:X}", warning.code);
  return {"Silence " + code + " in this line",
          {{{vel::TextLocation(at.file(), end), 0}, " {nowarn " + code + "}"}},
          false};
}

}  // namespace refhost
