// In which type the operands of an expression's operator meet, and what type the
// result has. The analysis judges by it and the emission computes by it.
#pragma once

#include "refhost/services/types.h"
#include "refhost/syntax/tree.h"

namespace refhost {

// What a binary operator does with its operands.
struct Meeting {
  enum class Kind : std::uint8_t {
    Invalid,     // the operator cannot be applied to these types
    Untyped,     // an operand has no type; the other's, if any, holds
    Number,      // both are taken to `operands`
    Logic,       // BOOL
    Bits,        // bitwise, both are taken to `operands`
    Same,        // both have the type `operands` and are compared as they are
    Text,        // both are STRING or both are WSTRING
    Durations,   // both are taken to `operands`, TIME or LTIME
    Scale,       // a duration multiplied or divided by a number
    Shift,       // a point in time plus or minus a duration
    Difference,  // of two points in time, a TIME
    Pointers,    // compared as numbers
    Step,        // a pointer plus or minus a number of bytes
    Distance,    // of two pointers, in bytes
  };
  Kind kind = Kind::Invalid;
  BasicDataType operands = BasicDataType::None;
  BasicDataType result = BasicDataType::None;
};

Meeting meet(const Expr& binary);

// The type in which an operand is computed: its own; where it has none, a likely one that
// is neither BOOL nor a text; else None.
BasicDataType typeOf(const ASTNode& operand);

// The type that a value will have, also where an operator names no type for its result.
BasicDataType likelyType(const ASTNode& value);

// The literal of an expression that is one, else null.
const Literal* literalOf(const ASTNode& node);

}  // namespace refhost
