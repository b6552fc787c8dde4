// The program's types as C spells them. Those that are structures in C must have been given
// their names.
#pragma once

#include <string>

#include "refhost/emit/symbol_names.h"

namespace refhost {

// STRING or WSTRING; false for no type.
bool isTextType(const vel::SymbolDataType* type);

// The C type of one character of the string type `text`.
const char* characterType(const vel::SymbolDataType& text);

// The C type, of a string the array of its characters. Empty for no type.
std::string typeText(const SymbolNames& names, const vel::SymbolDataType* type);

// The C type of a pointer to the whole array of a string, not to its first character.
std::string arrayPointerText(const vel::SymbolDataType& text);

// `name` declared with the type, without a semicolon.
std::string declaration(const SymbolNames& names, const vel::SymbolDataType* type,
                        const std::string& name);

// An empty string, an array or structure of zeros, or 0.
std::string zeroText(const SymbolNames& names, const vel::SymbolDataType* type);

}  // namespace refhost
