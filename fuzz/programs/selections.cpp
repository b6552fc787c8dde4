// Operators that give one of their operands.
#include <algorithm>

#include "fuzz/programs/signatures.h"

namespace generated {
namespace {

// As MIN and MAX compare: integers of which C would change the sign in the type of the result.
bool less(const Type& result, const Value& a, const Value& b) {
  if (!result.integer() || !a.type->integer() || !b.type->integer()) return compared(a, b) == -1;
  const bool negatives = a.type->kind == Type::Signed || b.type->kind == Type::Signed;
  const auto large = [](const Type& t) { return t.kind == Type::Unsigned && t.bits >= 32; };
  if (!negatives || (!large(*a.type) && !large(*b.type))) return order(a, b) == -1;
  return order(converted(result, a), converted(result, b)) == -1;
}

const Type& nextSigned(const Type& type) {
  return type.kind == Type::Unsigned ? generated::type(Type::Signed, std::min(64, 2 * type.bits))
                                     : type;
}

// Which type MIN and MAX give two integers.
const Type& selected(const Type& a, const Type& b) {
  if (a.alike(b) || !a.integer() || !b.integer()) return common(a, b);
  if (a.bits != b.bits) return nextSigned(a.bits > b.bits ? a : b);
  return nextSigned(b.kind == Type::Unsigned ? b : a);
}

Operator extreme(const char* name, bool least) {
  return {name, 0,
          [](Random& random, const Type& result) {
            if (result.number()) return pair(random, result, selected);
            return notText(result) ? Types{&result, &result} : Types();
          },
          [=](const Type& result, const Values& v) {
            const bool first = least ? less(result, v[0], v[1]) : less(result, v[1], v[0]);
            return converted(result, v[first ? 0 : 1]);
          }};
}

// Of one type, unlike the operands of the others.
Value limit(const Type&, const Values& v) {
  const bool ordered = order(v[0], v[2]) <= 0;
  if (!ordered) return v[2];
  return order(v[1], v[0]) == -1 ? v[0] : order(v[2], v[1]) == -1 ? v[2] : v[1];
}

// FALSE and 0 choose the first; a number beyond the inputs chooses the nearest.
Value chosen(const Type& result, const Values& v) {
  const Wide last = static_cast<Wide>(v.size()) - 2;
  const Wide position = std::clamp<Wide>(v[0].number, 0, last);
  return converted(result, v[1 + static_cast<std::size_t>(position)]);
}

// SINT, INT, ... LREAL: the last of the inputs' types is the result's.
Types multiplexed(Random& random, const Type& result) {
  if (result.text()) return {};
  Types inputs = {&any(random, &Type::integer)};
  const int count = 2 + random.below(3);
  const int full = random.below(count);
  for (int i = 0; i < count; ++i) {
    const bool same = i == full || !result.number() || random.chance(50);
    inputs.push_back(same ? &result : &any(random, [&](const Type& type) {
      const bool before =
          type.kind < result.kind || (type.kind == result.kind && type.bits <= result.bits);
      return type.number() && before;
    }));
  }
  return inputs;
}

}  // namespace

std::vector<Operator> selections() {
  return {extreme("MIN", true),
          extreme("MAX", false),
          {"LIMIT", 0, same(3, notText), limit},
          {"SEL", 0,
           [](Random&, const Type& result) {
             return Types{&type(Type::Bool, 1), &result, &result};
           },
           chosen, Operator::Name},
          {"MUX", 0, multiplexed, chosen},
          {"MOVE", 0, same(1, [](const Type&) { return true; }),
           [](const Type& result, const Values& v) { return converted(result, v[0]); }}};
}

}  // namespace generated
