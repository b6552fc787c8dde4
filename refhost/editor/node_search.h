// Finds the nodes that messages are about.
#pragma once

#include "refhost/diagnostics.h"
#include "refhost/editor/analysed_program.h"

namespace refhost {

// The unit, part of a test included, around the place; null for none.
const Unit* unitAround(const Tree& tree, vel::TextLocation place);

// The outermost node of a unit with this range, the right side of an assignment with the
// parentheses around it included. Null for none.
const ASTNode* nodeWith(const Tree& tree, const SourceRange& range);

// The call that `node` is, or that it consists of as an expression; null for none.
const Call* callIn(const ASTNode* node);

// The data type of an expression or a call; null for none.
const vel::SymbolDataType* dataTypeOf(const ASTNode& value);

}  // namespace refhost
