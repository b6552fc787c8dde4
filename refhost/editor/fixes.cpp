#include "refhost/editor/fixes.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <utility>

#include "refhost/editor/argument_fixes.h"
#include "refhost/editor/conversion_fixes.h"
#include "refhost/editor/declaration_fixes.h"
#include "refhost/editor/removal_fixes.h"
#include "refhost/editor/value_fixes.h"
#include "refhost/syntax/insertions.h"
#include "refhost/syntax/parser.h"

namespace refhost {

namespace {

// The places of the syntax errors in a text.
std::vector<std::uint32_t> syntaxErrorsIn(std::string text) {
  SourceManager sources;
  sources.add("", std::move(text));
  Tree tree;
  Diagnostics found;
  parse(sources, 0, tree, found);
  std::vector<std::uint32_t> places;
  for (const vel::VELMessage& message : found.records()) {
    places.push_back(message.location.offset());
  }
  return places;
}

std::string applied(std::string text, std::vector<TextEdit> edits) {
  std::stable_sort(edits.begin(), edits.end(), [](const TextEdit& a, const TextEdit& b) {
    return a.range.begin.offset() > b.range.begin.offset();
  });
  for (const TextEdit& edit : edits) {
    text.replace(edit.range.begin.offset(), edit.range.length, edit.text);
  }
  return text;
}

// The parser proposes what it has missed, but cannot look whether that is all. Those of its fixes
// remain with which it gets further than the place of the message.
void removeFutile(const std::string& text, std::uint32_t place, std::vector<Fix>& fixes) {
  const auto upTo = [](const std::vector<std::uint32_t>& places, std::size_t end) {
    return std::count_if(places.begin(), places.end(), [end](std::size_t at) { return at <= end; });
  };
  const std::vector<std::uint32_t> before = syntaxErrorsIn(text);
  const auto isFutile = [&](const Fix& fix) {
    const std::string changed = applied(text, fix.edits);
    const std::vector<std::uint32_t> after = syntaxErrorsIn(changed);
    return after.size() > before.size() ||
           upTo(after, place + changed.size() - text.size()) >= upTo(before, place);
  };
  fixes.erase(std::remove_if(fixes.begin(), fixes.end(), isFutile), fixes.end());
}

}  // namespace

std::vector<Fix> fixesFor(const AnalysedProgram& program, const Diagnostic& message) {
  std::vector<Fix> fixes = message.fixes;
  const std::uint32_t file = message.range.begin.file();
  const bool own = program.isOpenable(file);
  if (!own) return fixes;
  if (message.code == message::kSyntax.code && !fixes.empty()) {
    const std::string text(program.sources.text(file));
    removeFutile(text, message.range.begin.offset(), fixes);
  }
  addConversions(program, message, fixes);
  if (!addNamings(program, message, fixes)) addDeclarations(program, message, fixes);
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
