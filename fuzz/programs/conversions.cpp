// Conversions: a name of two types asks for one; of a name of one type the operand may be smaller.
#include <algorithm>

#include "fuzz/programs/signatures.h"

namespace generated {
namespace {

Value castTo(const Type& result, const Values& v) { return cast(result, v[0]); }
Value toInteger(const Type& result, const Values& v) { return rounded(result, v[0]); }
Value toBool(const Type&, const Values& v) { return boolean(v[0].number != 0 || v[0].real != 0); }
Value toText(const Type& result, const Values& v) { return {&result, 0, 0, printed(v[0])}; }
Value fromText(const Type& result, const Values& v) { return parsed(result, v[0].text); }

Value fromBcd(const Type& result, const Values& v) {
  const auto digit = [](Wide d) { return d > 9 ? 0 : d; };
  return integer(result, digit(v[0].number / 16) * 10 + digit(v[0].number % 16));
}
Value toBcd(const Type& result, const Values& v) {
  const Wide n = std::clamp<Wide>(v[0].number, 0, 99);
  return integer(result, n / 10 * 16 + n % 10);
}
Value size(const Type& result, const Values& v) {
  return integer(result, (v[0].type->bits + 7) / 8);
}

bool isPlain(const Type& type) { return notText(type) && !isBool(type); }
bool isWhole(const Type& type) { return isPlain(type) && !isReal(type); }
bool notReal(const Type& type) { return notText(type) && !isReal(type); }
bool isTime(const Type& type) { return type.kind >= Type::Duration && notText(type); }
bool isParsed(const Type& type) {
  return notText(type) && !(type.kind == Type::Duration && type.bits == 64);
}
bool isBcd(const Type& type) { return type.integer() && type.bits <= 16; }

}  // namespace

std::vector<Operator> conversions() {
  const Predicate isByte = is(Type::Unsigned, 8);
  return {{"$0_TO_$r", 0, from(notReal, isPlain), castTo},
          {"$0_TO_$r", 0, from(isReal, isReal), castTo},
          {"$0_TO_$r", 0, from(isReal, isWhole), toInteger, Operator::Small},
          {"$0_TO_BOOL", 0, from(isPlain, isBool), toBool},
          {"TO_BOOL", 0, from(notText, isBool), toBool},
          {"TO_$r", 0, from(notReal, isPlain), castTo},
          {"TO_$r", 0, from(isReal, isReal), castTo},
          {"TO_$r", 0, from(isReal, &Type::integer), toInteger, Operator::Small},
          {"TO_$r", 0, from(isReal, isTime), castTo, Operator::Small},
          {"TRUNC", 0, from(&Type::number, is(Type::Signed, 32)), castTo, Operator::Small},
          {"$0_TO_$r", 0, from(notText, &Type::text), toText},
          {"TO_$r", 0, from(notText, &Type::text), toText},
          {"$0_TO_$r", 0, from(&Type::text, isParsed), fromText},
          {"BCD_TO_INT", 0, from(isByte, is(Type::Signed, 16)), fromBcd},
          {"INT_TO_BCD", 0, from(isBcd, isByte), toBcd},
          {"SIZEOF", 0, from(notText, is(Type::Unsigned, 32)), size, Operator::Name}};
}

}  // namespace generated
