// Notations of device addresses, and parameters that are addresses.
#pragma once

#include <string_view>

#include "core/device_address.h"
#include "host/ast.h"

namespace vel {

class InternalInterface;

// Results of InternalInterface::addressNotation; any other number enforces neither notation.
inline constexpr int kIecNotation = 0;
inline constexpr int kLetterNotation = 1;

// Parses the source text of `parameter`; the empty address when it is no address.
HeapAddress addressOf(InternalInterface* ii, ASTNode* parameter);

// The first `count` characters after the percent sign of an IEC address: "QX" of `%QX0.1`.
std::string_view iecKind(std::string_view text, std::size_t count);

}  // namespace vel
