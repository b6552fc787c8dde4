// Constant integer expressions: case labels, lengths, steps.
#pragma once

#include <cstdint>
#include <optional>

#include "refhost/syntax/tree.h"

namespace refhost {

// The value of an analysed expression of literals, CONSTANT variables and the
// operators - + * / MOD; nothing for any other, and where a step leaves LINT.
std::optional<std::int64_t> constantInteger(const ASTNode& expression);

// The value of a literal that only ULINT holds.
std::optional<std::uint64_t> constantAboveLInt(const ASTNode& expression);

}  // namespace refhost
