// Operations whose result C compilers know. They warn of them unless an operand hides its
// expression.
#pragma once

#include <string>
#include <string_view>

#include "refhost/syntax/tree.h"

namespace refhost {

// The C operation of `expr` on the texts `a` and `b` of its operands, hidden where necessary.
// `type` is the type to which they have been converted, None if they have not.
std::string plainOperation(const Expr& expr, BasicDataType type, std::string a, std::string b);

// True of an operand whose bits compilers may all know.
bool isKnown(const vel::ASTNode& node);

// A text of the given type, None for that of the first operand of `expr`, whose value C compilers
// do not know.
std::string hidden(const Expr& expr, BasicDataType type, std::string_view text);

}  // namespace refhost
