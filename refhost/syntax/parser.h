// From source text to tree.
#pragma once

#include <cstdint>
#include <vector>

#include "host/message.h"
#include "refhost/syntax/source.h"
#include "refhost/syntax/tree.h"

namespace refhost {

// Expressions and statements nested deeper than this are refused with an error, so
// that no walk over a tree runs out of stack. Parentheses count; lists do not, nor do the left
// sides of chains of operators, which walks follow without a call.
constexpr int kMaxNesting = 1000;

// Parses file `file` of `sources`, appends its units to `tree` and its errors to
// `messages`. After a syntax error it goes on at the next statement or the next
// unit, so `tree` holds what could be understood.
void parse(const SourceManager& sources, std::uint32_t file, Tree& tree,
           std::vector<vel::VELMessage>& messages);

}  // namespace refhost
