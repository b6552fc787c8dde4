// Comments that name the declarations of the program, for files that other C includes.
#pragma once

#include <string>

#include "refhost/emit/file_context.h"

namespace refhost {

// Lines that precede the C of a unit or a type, and what follows the C of a variable in its line.
// All are empty unless the file is shared, and name no line of the source, so that they stay what
// they are when other declarations change.
std::string commentOn(const FileContext& file, const UnitSymbol& unit);
std::string commentOn(const FileContext& file, const ProgramInstance& instance);
std::string commentOn(const FileContext& file, const StructType& structure);
std::string commentOn(const FileContext& file, const VarSymbol& variable);
// The enumerations of the program, whose values are numbers in C.
std::string enumerationComments(const FileContext& file);

}  // namespace refhost
