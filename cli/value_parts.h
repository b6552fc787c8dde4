// Values of arrays and structures.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "refhost/session.h"

namespace velc {

// Formats a value in the syntax of an initial value. `bytes` begins with its elementary values in
// order, without gaps, which are removed from it. Throws Failure when `bytes` is too short.
std::string partsText(const refhost::ValueShape& shape, std::string_view& bytes);

// The number of elements of an array or of members of a structure.
std::int64_t partCount(const refhost::ValueShape& shape);
// The element or member of `variable` with this number, from 0. Its name has the form of a path.
refhost::ProgramVariable partNumber(const refhost::ProgramVariable& variable, std::int64_t number);

struct PartAt {
  refhost::ProgramVariable variable;
  std::string_view rest;  // of the path, from the first step that leads nowhere on
};
// The part of `variable` at `path`, such as `[2].x` or `.names[1, 3]`; the whole variable for an
// empty path.
PartAt partAt(const refhost::ProgramVariable& variable, std::string_view path);

}  // namespace velc
