#include "refhost/editor/value_fixes.h"

#include <string>

#include "refhost/editor/node_search.h"

namespace refhost {

void addTypes(const AnalysedProgram& program, const Diagnostic& message, std::vector<Fix>& fixes) {
  const bool ambiguous = message.code == message::kAmbiguousValue.code;
  const ASTNode* const value = ambiguous ? nodeWith(program.tree, message.range) : nullptr;
  if (value == nullptr) return;
  const std::string_view name = vel::TreeBuilder::source(*value);
  // Where the surroundings told the enumeration, the value would not be ambiguous.
  for (const EnumType* const type : program.services.symbols.enumerations()) {
    if (type->value(name) == nullptr) continue;
    const std::string written = type->name() + "#" + std::string(name);
    fixes.push_back({"Write '" + written + "'", {{message.range, written}}, false});
  }
}

}  // namespace refhost
