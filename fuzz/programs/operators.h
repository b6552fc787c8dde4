// The operators of random programs: which operands give which result, and its value.
#pragma once

#include <functional>
#include <random>
#include <string>
#include <vector>

#include "fuzz/programs/values.h"

namespace generated {

// The same everywhere for the same seed, unlike the standard's distributions.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}
  std::uint64_t bits() { return engine_(); }
  int below(int limit) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(limit)); }
  bool chance(int percent) { return below(100) < percent; }
  template <typename Items>
  const auto& pick(const Items& items) {
    return items[static_cast<std::size_t>(below(static_cast<int>(items.size())))];
  }

 private:
  std::mt19937_64 engine_;
};

using Predicate = std::function<bool(const Type&)>;
using Types = std::vector<const Type*>;
using Values = std::vector<Value>;

struct Operator {
  // What operands must be beyond their types, so that C defines the result.
  enum Need {
    Nothing,
    Name,      // the first is a variable or a literal with its type
    Computed,  // the first is no literal: the type of a small one does not reach the C
    Small,     // a real operand is small: C converts no others to integers
    Position,  // an integer is mostly a small number
    Shift      // the second is not negative and below the width of the first
  };
  std::string name;  // in a call `$0` stands for the type of the first operand, `$r` for the
                     // result's
  int precedence;    // of an infix or prefix operator, from 1; 0 for a call
  // For a result of that type; none when there is no such result.
  std::function<Types(Random&, const Type&)> operands;
  std::function<Value(const Type&, const Values&)> evaluate;
  Need need = Nothing;
};

const std::vector<Operator>& operators();

// As it is called for these types.
std::string nameOf(const Operator& op, const Type& first, const Type& result);

}  // namespace generated
