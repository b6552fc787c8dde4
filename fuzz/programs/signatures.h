// What the families of operators share, and the rows of each.
#pragma once

#include "fuzz/programs/operators.h"

namespace generated {

using Signature = std::function<Types(Random&, const Type&)>;

const Type& any(Random& random, const Predicate& wanted);

// Types that are alike.
Predicate is(Type::Kind kind, int bits);
bool isBool(const Type& type);
bool isReal(const Type& type);
bool notText(const Type& type);

// `count` operands of the result's type, where it is one that is wanted.
Signature same(int count, const Predicate& wanted);
// One operand that is wanted, for a result of which `to` is true.
Signature from(const Predicate& wanted, const Predicate& to);
// Two operands of different types at times, for which `meet` gives the result's type.
Types pair(Random& random, const Type& result, const Type& (*meet)(const Type&, const Type&));

// By one of + - * / and % for MOD, as in the type of the result.
Value arithmetic(char op, const Type& result, const Values& operands);
// Their order in the type where they meet.
int compared(const Value& a, const Value& b);

// The rows, in the order of the table.
std::vector<Operator> infixes();
std::vector<Operator> durations();
std::vector<Operator> numericFunctions();
std::vector<Operator> selections();
std::vector<Operator> shifts();
std::vector<Operator> conversions();
std::vector<Operator> textFunctions();

}  // namespace generated
