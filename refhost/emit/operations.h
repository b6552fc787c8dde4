// The C form of the language's operators, as far as their callers depend on it.
#pragma once

#include "refhost/syntax/tree.h"

namespace refhost {

// Integer arithmetic that is written as a cast or as a call, so that it needs no parentheses.
bool isCastOrCall(const Expr& expr);

// A complement that is written as a call: C complements the small types as an int, and gcc warns
// if the result is compared, even after a cast.
bool isComplementCall(const Expr& expr);

}  // namespace refhost
