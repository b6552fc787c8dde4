// Selections, shifts, rotations and edges.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>

#include "tests/execution/program.h"

namespace execution {
namespace {

// ---- Selections ---------------------------------------------------------------

// The type in which C compares two numbers and gives one of them.
const Type& common(const Type& a, const Type& b) {
  if (a.kind == Type::Real || b.kind == Type::Real) {
    const bool isReal = a.name != "LREAL" && b.name != "LREAL";
    return typeOf(isReal ? "REAL" : "LREAL");
  }
  const auto promoted = [](const Type& type) { return type.bits < 32 ? typeOf("DINT") : type; };
  const Type left = promoted(a);
  const Type right = promoted(b);
  if (left.bits != right.bits) return typeOf((left.bits > right.bits ? left : right).name);
  return typeOf((left.kind == Type::Unsigned ? left : right).name);
}

// Macros compare as C does, and so a signed with an unsigned number as unsigned ones.
TEST(Choices, Extremes) {
  Program program;
  program.compileWith("-Wno-sign-compare", "MIN and MAX compare what they are given");
  for (const Type& a : types()) {
    for (const Type& b : types()) {
      if (!a.isNumber() || !b.isNumber() || a.isBitString() || b.isBitString()) continue;
      const Type& type = a.name == b.name ? typeOf(a.name) : common(a, b);
      for (const Value& x : few(a)) {
        for (const Value& y : few(b)) {
          const Value left = *converted(common(a, b), x);
          const Value right = *converted(common(a, b), y);
          const Value& least = left.number < right.number ? left : right;
          const Value& most = left.number > right.number ? left : right;
          program.expect("MIN", {x, y}, *converted(type, least));
          program.expect("MAX", {x, y}, *converted(type, most));
        }
      }
    }
  }
  program.run();
}

TEST(Choices, OfOneType) {
  Program program;
  for (const Type& type : types()) {
    if (type.kind == Type::Text) continue;
    const std::vector<Value> all = few(type);
    for (const Value& low : all) {
      for (const Value& high : all) {
        program.expect("SEL", {value("BOOL", 0), low, high}, low);
        program.expect("SEL", {value("BOOL", 1), low, high}, high);
        if (type.clock || type.isBitString()) {
          program.expect("MIN", {low, high}, low.number < high.number ? low : high);
          program.expect("MAX", {low, high}, low.number > high.number ? low : high);
        }
        for (const Value& in : all) {
          const Value limited = !(low.number <= high.number) ? high
                                : in.number < low.number     ? low
                                : in.number > high.number    ? high
                                                             : in;
          program.expect("LIMIT", {low, in, high}, limited);
        }
      }
    }
  }
  for (const char* const type : {"STRING", "WSTRING"}) {
    program.expect("SEL", {value("BOOL", 1), text(type, "one"), text(type, "two")},
                   text(type, "two"));
  }
  program.run();
}

// The result has the type that is last in this order; a selector beyond an end takes it.
TEST(Choices, Multiplexers) {
  const char* const order[] = {"SINT", "INT",   "DINT",  "LINT",  "USINT", "BYTE", "UINT",
                               "WORD", "UDINT", "DWORD", "ULINT", "LWORD", "REAL", "LREAL"};
  Program program;
  const auto expect = [&](const Value& selector, std::vector<Value> inputs, const Type& type) {
    const Number last = static_cast<Number>(inputs.size()) - 1;
    const Number chosen = std::fmin(std::fmax(selector.number, 0), last);
    const Value expected = *converted(type, inputs[static_cast<std::size_t>(chosen)]);
    inputs.insert(inputs.begin(), selector);
    program.expect("MUX", inputs, expected);
  };
  for (const Type& type : types()) {
    if (type.kind == Type::Text) continue;
    for (const Number selector : {-1, 0, 2, 4, 5, 127}) {
      expect(value("SINT", selector), few(type), type);
    }
  }
  const std::vector<Value> two = {value("INT", 10), value("INT", 20)};
  for (const Type& type : types()) {
    if (!type.isInteger()) continue;
    for (const Value& selector : samples(type)) expect(selector, two, typeOf("INT"));
  }
  for (std::size_t i = 0; i < std::size(order); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      for (const Value& input : few(typeOf(order[j]))) {
        expect(value("INT", 1), {value(order[i], 0), input}, typeOf(order[i]));
      }
    }
  }
  program.run();
}

// ---- Shifts and rotations -----------------------------------------------------

class BitMoves : public testing::TestWithParam<const char*> {};

TEST_P(BitMoves, ByEveryCount) {
  const std::string name = GetParam();
  const bool left = name.back() == 'L';
  Program program;
  if (name == "SHL") {
    program.compileWith("-fno-sanitize=shift-base", "SHL shifts signed numbers as they are");
  }
  for (const Type& type : types()) {
    if (!type.isInteger()) continue;
    const Number width = type.bits;
    for (const Number count :
         {Number{0}, Number{1}, Number{5}, width - 1, width, width + 3, Number{-1}, -width - 1}) {
      for (const std::string countType : {"INT", "SINT", "UDINT", "LINT"}) {
        const Value by = value(countType, count);
        if (by.number != count) continue;
        const bool all = countType == "INT" && !type.isBitString();
        for (const Value& in : all ? samples(type) : few(type)) {
          const Number bits = in.number < 0 ? in.number + std::exp2(width) : in.number;
          const Number turn = std::fmod((left ? count : -count) + 2 * width, width);
          Number result = 0;
          if (name[0] == 'S') {
            // C leaves a shift by the width or more open, and so do the macros.
            if (count >= width) continue;
            result = count < 0 ? 0 : std::floor(in.number * std::exp2(left ? count : -count));
          } else {
            // By a multiple of the width the macros shift by the width, which C leaves open.
            if (turn == 0 && width > 8) continue;
            result = std::fmod(bits * std::exp2(turn), std::exp2(width)) +
                     std::floor(bits / std::exp2(width - turn));
          }
          program.expect(name, {in, by}, value(type.name, result));
        }
      }
    }
  }
  program.run();
}

INSTANTIATE_TEST_SUITE_P(All, BitMoves, testing::Values("SHL", "SHR", "ROL", "ROR"));

// ---- Edges --------------------------------------------------------------------

// Each bit of a history is one scan, the last one lowest. Units of all kinds keep the edge.
TEST(Edges, OverScans) {
  const unsigned pattern = 0b1101000111010011;
  Program program;
  program.proves("MEP MEF");
  program.scans = 20;
  program.units =
      "FUNCTION Up : BOOL VAR_INPUT c : BOOL; END_VAR Up := MEP(c); END_FUNCTION\n"
      "FUNCTION Down : BOOL VAR_INPUT c : BOOL; END_VAR Down := mef(c); END_FUNCTION\n"
      "FUNCTION_BLOCK Both VAR_INPUT c : BOOL; END_VAR VAR_OUTPUT up, down : UDINT; END_VAR\n"
      "up := up * 2 + TO_UDINT(MEP(c)); down := down * 2 + TO_UDINT(MEF(c));\n"
      "END_FUNCTION_BLOCK\n";
  program.variables =
      "c, same, other : BOOL; inverse, direct : Both;\n"
      "up, down, fUp, fDown, dUp, dDown, iUp, iDown : UDINT;\n";
  const std::string rest = program.input(value("UDINT", pattern));
  program.body = "c := " + rest + " MOD 2 = 1; " + rest + " := " + rest +
                 " / 2;\n"
                 "up := up * 2 + TO_UDINT(MEP(c)); down := down * 2 + TO_UDINT(MEF(c));\n"
                 // The same text has stored the condition already; another text has not.
                 "same := same OR MEP(c); other := other OR mep(c);\n"
                 "fUp := fUp * 2 + TO_UDINT(Up(c)); fDown := fDown * 2 + TO_UDINT(Down(c));\n"
                 "direct(c := c); dUp := direct.up; dDown := direct.down;\n"
                 "inverse(c := NOT c); iUp := inverse.up; iDown := inverse.down;\n";
  unsigned up = 0;
  unsigned down = 0;
  for (int scan = 0; scan < program.scans; ++scan) {
    const bool now = (pattern >> scan) % 2 != 0;
    const bool before = scan > 0 && (pattern >> (scan - 1)) % 2 != 0;
    up = up * 2 + (now && !before ? 1 : 0);
    down = down * 2 + (!now && before ? 1 : 0);
  }
  for (const char* const name : {"up", "fUp", "dUp"})
    program.expectVariable(name, value("UDINT", up));
  for (const char* const name : {"down", "fDown", "dDown"}) {
    program.expectVariable(name, value("UDINT", down));
  }
  program.expectVariable("same", value("BOOL", 0));
  program.expectVariable("other", value("BOOL", 1));
  // The condition is false before the first scan.
  const bool first = pattern % 2 == 0;
  program.expectVariable("iUp", value("UDINT", down + (first ? 1U << (program.scans - 1) : 0)));
  program.expectVariable("iDown", value("UDINT", first ? up : up - (1U << (program.scans - 1))));
  program.run();
}

}  // namespace
}  // namespace execution
