// How operators of the language are written in C, as far as their surroundings must know.
#pragma once

#include "refhost/syntax/tree.h"

namespace refhost {

// Integer arithmetic that is written as a cast to its type, or as a call.
bool isCastOrCall(const Expr& expr);

// A complement that is written as a call: C complements the small types as an int, and gcc warns
// where that is compared, cast or not.
bool isComplementCall(const Expr& expr);

}  // namespace refhost
