// Values that calls are tried with, and the bytes that variables hold them in. Types, values and
// what operators make of them are those of the random programs, which use nothing of the
// runtime, the plugin or the reference host.
#pragma once

#include <string>
#include <vector>

#include "fuzz/programs/operators.h"

namespace execution {

using generated::Type;
using generated::types;
using generated::Value;
using generated::Wide;

// The type of that name; there is one.
const Type& typeOf(const std::string& name);
Value value(const std::string& type, Wide number);  // modulo the type's width
Value text(const std::string& type, const std::string& units);

// Limits of all widths and their neighbours, rounding halves, and what is no finite number,
// as far as the type has them; some texts.
std::vector<Value> samples(const Type& type);
// The first of the samples: 0, 1, -1 and the ends; of reals NaN, infinities and halves.
std::vector<Value> few(const Type& type);

// What a variable of the type holds; of a text as much as it needs.
std::string bytes(const Value& value);
Value fromBytes(const Type& type, const std::string& bytes);

}  // namespace execution
