#include "refhost/editor/fixes.h"

#include <fmt/format.h>

#include "refhost/editor/argument_fixes.h"
#include "refhost/editor/conversion_fixes.h"
#include "refhost/editor/declaration_fixes.h"
#include "refhost/editor/value_fixes.h"

namespace refhost {

namespace {

// The end of what is neither a blank nor a comment in a line.
std::uint32_t codeEnd(std::string_view line) {
  std::uint32_t end = 0;
  char quote = 0;
  for (std::uint32_t at = 0; at < line.size(); ++at) {
    const char c = line[at];
    const std::string_view two = line.substr(at, 2);
    if (quote == 0 && two == "//") break;
    if (quote == 0 && (two == "(*" || two == "/*")) {
      const std::size_t close = line.find(c == '(' ? "*)" : "*/", at + 2);
      if (close == line.npos) break;
      at = static_cast<std::uint32_t>(close) + 1;
      continue;
    }
    if (quote != 0) {
      if (c == quote) quote = 0;
    } else if (c == '\'' || c == '"') {
      quote = c;
    }
    if (c != ' ' && c != '\t' && c != '\r') end = at + 1;
  }
  return end;
}

}  // namespace

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
  const auto begin = at.offset() - static_cast<std::uint32_t>(sources.offsetInLine(at));
  const std::uint32_t end = begin + codeEnd(sources.line(at));
  const std::string code = fmt::format("0x{:X}", warning.code);
  return {"Silence " + code + " in this line",
          {{{vel::TextLocation(at.file(), end), 0}, " {nowarn " + code + "}"}},
          false};
}

}  // namespace refhost
