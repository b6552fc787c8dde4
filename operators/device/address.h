// Device addresses among the parameters of an invocation.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/ast.h"
#include "host/device_memory.h"

namespace vel {

class InternalInterface;

// Notations of addresses as the host numbers them; any other number enforces neither.
inline constexpr int kIecNotation = 0;
inline constexpr int kLetterNotation = 1;

// The address that the text of `parameter` names; the empty one when it names none.
HeapAddress addressOf(InternalInterface* ii, ASTNode* parameter);

// The place of an address in the memory image of the generated program.
std::uint32_t rawAddress(InternalInterface* ii, const HeapAddress& address);

// What stands behind the percent sign of an IEC address, at most `count` characters.
std::string_view iecKind(std::string_view text, std::size_t count);

}  // namespace vel
