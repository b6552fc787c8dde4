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

// The source of a node; where it has lists of others its first word, or its name or labels, and
// the lists in brackets.
std::string show(const refhost::ASTNode& node);
