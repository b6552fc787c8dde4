// Texts of values and values of texts.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ctime>

#include "cli/value_format.h"
#include "tests/execution/program.h"

namespace execution {
namespace {

std::string calendar(const char* format, Number seconds) {
  const auto time = static_cast<std::time_t>(seconds);
  std::tm date{};
  char text[40];
  return {text, std::strftime(text, sizeof text, format, gmtime_r(&time, &date))};
}

std::string printed(const Value& value) {
  const std::string& type = value.type->name;
  const Number x = value.number;
  if (type == "BOOL") return x != 0 ? "TRUE" : "FALSE";
  // Digits are compared with those of the C++ library in tests/runtime.
  if (type == "REAL") return velc::valueText(vel::BasicDataType::Real, type, bytes(value));
  if (type == "LREAL") return velc::valueText(vel::BasicDataType::LReal, type, bytes(value));
  if (type == "TIME") return fmt::format("T#{:.0f}ms", x);
  if (type == "LTIME") return fmt::format("LTIME#{:.0f}ns", x);
  if (type == "DATE") return calendar("D#%Y-%m-%d", x);
  if (type == "DT") return calendar("DT#%Y-%m-%d-%H:%M:%S", x);
  if (type != "TOD") return fmt::format("{:.0f}", x);
  const auto ms = static_cast<unsigned>(x);
  return fmt::format("TOD#{:02}:{:02}:{:02}", ms / 3600000, ms / 60000 % 60, ms / 1000 % 60) +
         (ms % 1000 != 0 ? fmt::format(".{:03}", ms % 1000) : "");
}

TEST(Texts, OfEveryType) {
  for (const char* const target : {"STRING", "WSTRING"}) {
    Program program;
    for (const Type& source : types()) {
      if (source.kind == Type::Text) continue;
      for (const Value& sample : samples(source)) {
        const std::string name = std::string("TO_") + target;
        const Value expected = text(target, printed(sample));
        program.expect(source.name + '_' + name, {sample}, expected);
        program.expect(name, {sample}, expected);
      }
    }
    program.run();
  }
}

// ---- Reading ------------------------------------------------------------------

// The same text as STRING and WSTRING through STRING_TO_X, WSTRING_TO_X, each of which takes
// both, and TO_X.
void expectRead(Program& program, const std::string& units, const Value& expected) {
  const std::string& target = expected.type->name;
  for (const char* const type : {"STRING", "WSTRING"}) {
    const Value input = text(type, units);
    // TO_BOOL asks whether there is a text at all, which -Waddress knows there is.
    if (target != "BOOL") program.expect("TO_" + target, {input}, expected);
    if (target == "LTIME") continue;  // has no name of its own
    program.expect("STRING_TO_" + target, {input}, expected);
    program.expect("WSTRING_TO_" + target, {input}, expected);
  }
}

TEST(Texts, ReadBack) {
  for (const Type& type : types()) {
    if (type.kind == Type::Text) continue;
    Program program;
    for (const Value& sample : samples(type)) {
      Value expected = sample;
      if (type.name == "DATE") expected.number -= std::fmod(sample.number, 86400);
      const bool noClockShowsIt = type.name == "TOD" && sample.number >= 86400000;
      if (noClockShowsIt) expected.number = 0;
      expectRead(program, printed(sample), expected);
    }
    program.run();
  }
}

// The whole text is one value or it is 0; what is out of range takes the nearest value. The
// texts of other types are those of tests/runtime.
struct Meaning {
  const char* text;
  Number meant;
};

TEST(Texts, OfIntegers) {
  // clang-format off
  const Meaning rows[] = {
      {"1_000", 1000}, {"+12", 12}, {" \t-12 ", -12}, {"2#1010_1010", 170}, {"8#777", 511},
      {"16#fF", 255}, {"-16#80", -128}, {"0009", 9}, {"99999999999999999999999", 1e23L},
      {"-99999999999999999999999", -1e23L}, {"16#FFFF_FFFF_FFFF_FFFF", 18446744073709551615.0L},
      {"18446744073709551616", 1e23L}, {"-9223372036854775809", -1e23L}, {"", 0}, {"-", 0},
      {"12abc", 0}, {"1__0", 0}, {"_1", 0}, {"1 2", 0}, {"2#2", 0}, {"1.0", 0}};
  // clang-format on
  Program program;
  for (const Type& type : types()) {
    if (!type.isInteger()) continue;
    for (const Meaning& row : rows) {
      const Number held = std::clamp(row.meant, lowest(type), highest(type));
      expectRead(program, row.text, value(type.name, held));
    }
  }
  program.run();
}

}  // namespace
}  // namespace execution
