// Declarations of structures and functions.
#pragma once

#include <string>

#include "refhost/emit/file_context.h"

namespace refhost {

// The structures of the program's types, each after those of its members, and the variables of
// programs and the global ones.
std::string structures(const SymbolNames& names, const Services& services);

std::string prototypes(FileContext& file);
// The prototype of a FUNCTION, without a semicolon.
std::string functionHead(const SymbolNames& names, const UnitSymbol& function);

// The heads of the functions that initialise a structure, an instance of a function block or of a
// PROGRAM. They take a table of places if there are variables AT %Q* in it.
std::string initHead(FileContext& file, const StructType& structure);
std::string initHead(FileContext& file, const UnitSymbol& unit);
// The table of the places that VAR_CONFIG gives.
std::string placesTable(const ConfiguredVariables::Root& root);

// A bit parameter that is an input has a companion, a hidden parameter by which the operators of
// its bits reach the argument: the input itself is a copy. An in-out parameter is a pointer.
bool keepsCompanion(const VarSymbol& variable);
// The name that the operators use for it, which no variable of the program can have in C.
std::string companion(const VarSymbol& parameter);

}  // namespace refhost
