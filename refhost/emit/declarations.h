// Declarations of structures, variables and functions.
#pragma once

#include <functional>
#include <string>

#include "refhost/emit/file_context.h"

namespace refhost {

// Calls `type` for each type that is a structure in C, after the types of its members, and `unit`
// for each unit, after the types of its variables: the global variables last. A structure need not
// precede those with pointers to it.
struct InOrder {
  std::function<void(const vel::SymbolDataType&)> type;
  std::function<void(const UnitSymbol&)> unit;
};
void declareInOrder(const FileContext& file, const InOrder& declare);

// The structure of an array, a structure or a function block. In a shared file one that other
// programs have, too, is guarded, so that the headers of several can be included.
std::string structure(const FileContext& file, const vel::SymbolDataType& type);
// The structure of a unit's variables.
std::string structure(const FileContext& file, const UnitSymbol& unit);
// All of the program's structures, and the variables of programs and the global ones.
std::string structures(const FileContext& file);

// True of a unit whose variables are an object of its own: of the global variables, and of a
// PROGRAM without a configuration.
bool hasData(const UnitSymbol& unit);
// The declarations of such an object, `data`, and of the variables of an instance.
std::string dataDeclaration(const FileContext& file, const UnitSymbol& unit);
std::string dataDeclaration(const FileContext& file, const ProgramInstance& instance);
// The definitions of all of them, which a shared file needs besides.
std::string dataDefinitions(const FileContext& file);
std::string dataDefinition(const FileContext& file, const UnitSymbol& unit);
std::string dataDefinition(const FileContext& file, const ProgramInstance& instance);

// The prototypes of what belongs to a structure (empty if its variables begin with zeros), a unit,
// the global variables included, an instance or the configuration; and all of them.
std::string prototypes(FileContext& file, const StructType& structure);
std::string prototypes(FileContext& file, const UnitSymbol& unit);
std::string prototypes(FileContext& file, const ProgramInstance& instance);
std::string configurationPrototypes(const FileContext& file);
std::string prototypes(FileContext& file);

// The prototype of a FUNCTION, without a semicolon.
std::string functionHead(const FileContext& file, const UnitSymbol& function);

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
