// The types of operands and results of the language's operators. The analysis checks by them and
// the emission computes in them.
#pragma once

#include "refhost/services/types.h"
#include "refhost/syntax/tree.h"

namespace refhost {

// The common type in which the operands of a binary operator are computed, and the result's type.
struct CommonType {
  enum class Kind : std::uint8_t {
    Invalid,     // the operator cannot be applied to these types
    Unknown,     // an operand is refused, and so has no type
    Number,      // both are converted to `operands`
    Logic,       // BOOL
    Bits,        // bitwise, both are converted to `operands`
    Same,        // both have the type `operands` and are compared as they are
    Strings,     // both are STRING or both are WSTRING
    Durations,   // both are converted to `operands`, TIME or LTIME
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

CommonType commonType(const Expr& binary);

// The type that is wanted of an operand beside one of type `other`, if that of the result is
// `wanted`: a REAL or LREAL for untyped literals beside an integer, too. Either may be null.
const vel::SymbolDataType* wantedBeside(const vel::SymbolDataType* other,
                                        const vel::SymbolDataType* wanted);

// The type in which a value is stored and computed; None for one that is refused.
BasicDataType typeOf(const ASTNode& value);

// Null when the expression is not a literal.
const Literal* literalOf(const ASTNode& node);
// True if a REAL holds the value as it is.
inline bool isSingle(double value) {
  return static_cast<double>(static_cast<float>(value)) == value;
}

// True of untyped numbers, of what is computed of these only, and of a choice among them.
bool isUntypedNumber(const ASTNode& value);

// A value in messages: an untyped number as it is written, for any other value its type.
std::string describe(const ASTNode& value, const vel::SymbolDataType* type);
inline std::string describe(const Expr& value) { return describe(value, value.dataType); }

}  // namespace refhost
