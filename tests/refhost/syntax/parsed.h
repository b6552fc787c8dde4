// A source text, the tree that it gave, and both as texts for comparison.
#pragma once

#include <string>
#include <vector>

#include "refhost/syntax/parser.h"

struct Parsed {
  explicit Parsed(std::string source);

  // "LINE:COLUMN TEXT" of every message, one per line.
  std::string errors() const;
  // Every unit, one per line, see show().
  std::string units() const;
  // The statements of the first unit, one per line.
  std::string statements() const;

  refhost::SourceManager sources;
  refhost::Tree tree;
  std::vector<refhost::Diagnostic> messages;
};

// A node as text: `(+ a 1)` for an operator, `f[a 1]` for a call, `{f[a]}` for one under
// its wrapper, `(if c [...] [...])` for a statement, `_` for a leaf left out.
std::string show(const refhost::ASTNode* node);
