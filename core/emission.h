// What operators share when they write C text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/basic_data_type.h"
#include "host/generator.h"
#include "host/text_location.h"

namespace vel {

// The text operations of a generator.
GenClanAPI* clanApi(Generator* gen);

// An empty text, with memory reserved so that a usual call is allocated once.
std::string emptyCallText();

// Appends the leaves of `parameterList` to `out`, each in parentheses: `(a), (b)`.
// Nothing for a list that is empty or missing.
void genArgs(Generator* gen, ASTNode* parameterList, std::string& out);

// A call of a C function: `function((a), (b))`.
std::string callText(Generator* gen, std::string_view function, ASTNode* parameterList);

// The address of a byte of the device memory.
std::string memoryByteText(std::uint32_t offset);

// Enters a call of the function `callee`, by the unit that code is generated for, in the host's
// call tree, if it keeps one.
void recordFirmwareCall(Generator* gen, const std::string& callee);

// The type of `expression` in the unit around `invocation`. What the host has to say of
// it was said at the check and is dropped.
DataTypeInfo typeForText(Generator* gen, ASTNode* invocation, ASTNode* expression);

}  // namespace vel
