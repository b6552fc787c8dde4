// The values of constants, as the generated program has them.
#pragma once

#include <string>

#include "refhost/services/unit_symbol.h"

namespace refhost {

// The value of a CONSTANT variable of an elementary type or an enumeration as a literal, in the
// form in which values of running programs are printed. Its initial value may contain literals,
// other constants and operators of the language but `**`. Empty for all others, and where an
// operation has no exact result: an overflow or a division by 0.
std::string constantText(const VarSymbol& constant);

}  // namespace refhost
