// Writes literals in C, from the results of hostkit::parseLiteral.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "hostkit/literal.h"

namespace hostkit {

// These append to `out`. An integer has the suffix that its size requires.
void appendInteger(bool negative, std::uint64_t magnitude, std::string& out);
void appendInteger(std::int64_t value, std::string& out);
// A literal as an operand of type `type`, to which it must be assignable. With None, a typed
// literal has its own type and an untyped one has none.
void appendLiteral(const LiteralValue& value, vel::BasicDataType type, std::string& out);
// Translates a literal of the source; empty when `source` is not a literal.
std::string literalText(std::string_view source);
// True for a negative number, whose C text needs parentheses as an operand.
bool isNegative(const LiteralValue& value);

}  // namespace hostkit
