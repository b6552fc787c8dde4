// What the reference host knows of single operators.
#pragma once

#include <string_view>

namespace refhost {

// True for parameter `index` of an operator that may name a type, an address or a unit.
bool namesOperand(std::string_view operatorName, int index);

// True for the operators whose result is one of their parameters as it stands.
bool choosesAmongValues(std::string_view operatorName);

// True for the operators that put their parameters beside casts or operators of their
// own, without parentheses.
bool writesParametersBare(std::string_view operatorName);

// True for the operators that remember what they were given, or read what the program does
// not hold: each call counts.
bool countsCalls(std::string_view operatorName);

// False for the operators that are statements in C, and so have no value.
bool givesValue(std::string_view operatorName);

}  // namespace refhost
