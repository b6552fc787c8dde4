// Declarations of structures and functions.
#pragma once

#include <string>

#include "refhost/emit/file_context.h"

namespace refhost {

// Structures of the program's types, each behind those that it holds, and the data of its
// programs and global variables.
std::string structures(const SymbolNames& names, const SymbolTable& symbols);

std::string prototypes(FileContext& file);
// Of a FUNCTION, without a semicolon.
std::string functionHead(const SymbolNames& names, const UnitSymbol& function);

// An input is a copy, so that what it was given is reached through a companion that the caller
// fills in; an in-out parameter is a pointer already.
bool keepsCompanion(const VarSymbol& variable);
// The plugin's name of it, which no variable of the program can have in C.
std::string companion(const VarSymbol& parameter);

}  // namespace refhost
