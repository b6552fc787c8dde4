// Notations of device addresses, and the addresses that parameters name.
#pragma once

#include <string_view>

#include "core/device_address.h"
#include "host/ast.h"

namespace vel {

class InternalInterface;

// Notations of addresses as the host numbers them; any other number enforces neither.
inline constexpr int kIecNotation = 0;
inline constexpr int kLetterNotation = 1;

// The address that the text of `parameter` names; the empty one when it names none.
HeapAddress addressOf(InternalInterface* ii, ASTNode* parameter);

// What stands behind the percent sign of an IEC address, at most `count` characters.
std::string_view iecKind(std::string_view text, std::size_t count);

}  // namespace vel
