// Helpers with which operators generate C.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/basic_data_type.h"
#include "host/generator.h"
#include "host/text_location.h"

namespace vel {

// The interface of `gen` that returns C text; null when `gen` is null.
GenClanAPI* clanApi(Generator* gen);

// An empty string with enough capacity that generating a usual call allocates only once.
std::string emptyCallText();

// Appends the leaves of `parameterList` to `out`, each in parentheses: `(a), (b)`.
// Appends nothing for an empty list or null.
void genArgs(Generator* gen, ASTNode* parameterList, std::string& out);

// A call of a C function: `function((a), (b))`.
std::string callText(Generator* gen, std::string_view function, ASTNode* parameterList);

// A C expression for the address of a byte of the device memory.
std::string memoryByteText(std::uint32_t offset);

// Records in the host's call tree, if it has one, that the unit being generated calls the
// runtime function `callee`.
void recordFirmwareCall(Generator* gen, const std::string& callee);

// The type of `expression` in the unit that contains `invocation`. Discards the host's
// messages, since the check has already reported them.
DataTypeInfo typeForText(Generator* gen, ASTNode* invocation, ASTNode* expression);

}  // namespace vel
