// Values of variables in JSON.
#pragma once

#include <string>
#include <string_view>

#include "refhost/value_shape.h"

namespace velc {

// A string with its quotes. Text that is not UTF-8 is taken for one character a byte.
std::string jsonString(std::string_view text);

// A value in JSON: numbers and bit strings are numbers, but NaN and the infinities strings; BOOLs
// are true and false; strings are their text; everything else is a string of the value as `--set`
// accepts it; arrays and structures are arrays and objects. `bytes` as for partsText().
std::string valueJson(const refhost::ValueShape& shape, std::string_view& bytes);

}  // namespace velc
