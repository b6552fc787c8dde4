// Values with parts: arrays and structures, down to their elementary values.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "refhost/session.h"

namespace velc {

// C statements that hand out the elementary values of `reference`, in order.
std::string puttingStatements(const refhost::ValueShape& shape, const std::string& reference);

// The value as the user reads it, in the form of an initial value; `bytes` begin with what
// the statements above hand out, and are shortened by it. Throws Failure when they end
// before.
std::string partsText(const refhost::ValueShape& shape, std::string_view& bytes);

// The part of `variable` that `path` leads to: `[2].x`, `.names[1, 3]`; nothing when there
// is none, all of it for an empty path.
std::optional<refhost::ProgramVariable> partOf(const refhost::ProgramVariable& variable,
                                               std::string_view path);

}  // namespace velc
