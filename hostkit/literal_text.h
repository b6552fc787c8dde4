// Literals in C, for hosts whose trees keep them as hostkit::parseLiteral gives them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "hostkit/literal.h"

namespace hostkit {

// These append to `out`. An integer has the suffix that its size asks for.
void appendInteger(bool negative, std::uint64_t magnitude, std::string& out);
void appendInteger(std::int64_t value, std::string& out);
// A literal's value as an operand of type `type`, which it can be given to; with None
// as it stands, a typed literal with its own type.
void appendLiteral(const LiteralValue& value, vel::BasicDataType type, std::string& out);
// A literal as it stands in the source; empty for every text that is none.
std::string literalText(std::string_view source);
// True when the text needs parentheses as an operand.
bool isNegative(const LiteralValue& value);

}  // namespace hostkit
