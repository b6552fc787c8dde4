// Assignments in C.
#pragma once

#include <string>

#include "refhost/services/types.h"

namespace refhost {

// `text` as the operand of a cast: in parentheses, if it is not already.
std::string enclosed(const std::string& text);

// The C statement, without its semicolon, that gives `place` the value `value` of
// type `from`. `capacity` counts the code units of a string's array, its terminator
// included.
std::string storeText(BasicDataType to, int capacity, const std::string& place,
                      const std::string& value, BasicDataType from);

}  // namespace refhost
