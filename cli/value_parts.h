// Values of arrays and structures.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "refhost/session.h"

namespace velc {

// Formats a value in the syntax of an initial value. `bytes` begins with its elementary values in
// order, without gaps, which are removed from it. Throws Failure when `bytes` is too short.
std::string partsText(const refhost::ValueShape& shape, std::string_view& bytes);

// The part of `variable` at `path`, such as `[2].x` or `.names[1, 3]`; the whole variable for an
// empty path. nullopt when there is no such part.
std::optional<refhost::ProgramVariable> partOf(const refhost::ProgramVariable& variable,
                                               std::string_view path);

}  // namespace velc
