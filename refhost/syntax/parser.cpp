#include "refhost/syntax/parser.h"

#include "grammar.h"
#include "refhost/syntax/syntax_errors.h"
#include "refhost/syntax/token_stream.h"
#include "refhost/syntax/tree_factory.h"

namespace refhost {

void parse(const SourceManager& sources, std::uint32_t file, Tree& tree, Diagnostics& messages) {
  const std::string_view text = sources.text(file);
  SyntaxErrors errors(text, file, messages);
  const std::string_view mark = text.substr(0, 2);
  if (mark == "\xFF\xFE" || mark == "\xFE\xFF") {
    errors.syntax({0, 2}, "the file is UTF-16, not UTF-8 or a code of single bytes");
    return;
  }
  TokenStream tokens(text, errors);
  TreeFactory make(text, file, tree, errors);
  // The result is ignored, since every error is among the messages.
  const std::size_t before = tree.units.size() + tree.tests.size();
  grammar::Parser(tokens, make, errors).parse();
  const std::size_t parsed = tree.units.size() + tree.tests.size() - before;
  if (errors.declarationsMissing() || parsed != static_cast<std::size_t>(tokens.units())) {
    tree.incomplete = true;
  }
  for (const std::string_view name : errors.refusedUnits()) {
    tree.refused.emplace(tree.intern(name), true);
  }
}

}  // namespace refhost
