// The C spelling of data types. The names of structures must have been chosen.
#pragma once

#include <string>

#include "refhost/emit/symbol_names.h"

namespace refhost {

// STRING or WSTRING; false for null.
bool isTextType(const vel::SymbolDataType* type);

// The C type of one character of the string type `text`.
const char* characterType(const vel::SymbolDataType& text);

// Appends a constant, with the suffix that its size requires.
void appendInteger(Integer value, std::string& out);

// The C type; an array of characters for a string, empty for null.
std::string typeText(const SymbolNames& names, const vel::SymbolDataType* type);

// The C type of a pointer to a string's array, not to its first character.
std::string arrayPointerText(const vel::SymbolDataType& text);

// The C type of a pointer that a program binds to variables of the type `target`, null for any.
std::string pointerText(const SymbolNames& names, const vel::SymbolDataType* target);

// The C type of a pointer to the elements of an array.
std::string elementPointerText(const SymbolNames& names, const vel::SymbolDataType& element);

// The C declaration of a variable or member, without a semicolon: of a pointer if it is indirect.
std::string declaration(const SymbolNames& names, const VarSymbol& variable);
// The C declaration of `name`, without a semicolon.
std::string declaration(const SymbolNames& names, const vel::SymbolDataType* type,
                        const std::string& name);

// An empty string, an array or structure of zeros, or 0.
std::string zeroText(const SymbolNames& names, const vel::SymbolDataType* type);

}  // namespace refhost
