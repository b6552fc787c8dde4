#include "hostkit/literal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <utility>

#include "hostkit/literal_text.h"

namespace {

using hostkit::LiteralError;
using hostkit::LiteralForm;
using hostkit::LiteralValue;
using vel::BasicDataType;

std::string describe(const std::string& source) {
  LiteralValue value;
  switch (hostkit::parseLiteral(source, value)) {
    case LiteralError::NotALiteral:
      return "no literal";
    case LiteralError::Malformed:
      return "malformed";
    case LiteralError::OutOfRange:
      return "out of range";
    case LiteralError::None:
      break;
  }
  std::string text = std::string(value.typeName) + (value.fixedType ? "! " : " ");
  switch (value.form) {
    case LiteralForm::Bool:
    case LiteralForm::Integer:
      return text + (value.negative ? "-" : "") + std::to_string(value.magnitude);
    case LiteralForm::Real:
      EXPECT_EQ(std::stod(value.text), value.real);
      return text + value.text;
    case LiteralForm::String:
      return text + value.text;
    default:
      return text + std::to_string(value.ticks);
  }
}

TEST(Literal, HasAValueAndAType) {
  // Of each type, fixed by the literal where it ends in `!`, literals and their values where these
  // are written in another way; then those that have none.
  const std::pair<std::string, const char*> types[] = {
      {"SINT", "0 127 -128 +5=5 -0=0 -16#80=-128"},
      {"INT", "128 -129"},
      {"DINT", "32_768=32768"},
      {"LINT", "2147483648 -9223372036854775808"},
      {"ULINT",
       "9223372036854775808 18446744073709551615 16#1_0000_0000=4294967296 "
       "16#FFFFFFFFFFFFFFFF=18446744073709551615"},
      {"out of range",
       "18446744073709551616 -9223372036854775809 16#10000000000000000 INT#32768 BYTE#256 BYTE#-1 "
       "BOOL#2 1e400 REAL#1e39 T#2147483648ms T#25d LT#106752d LT#99999999999999999999d "
       "D#2106-02-08 D#1969-12-31"},
      {"USINT", "2#1010_1010=170"},
      {"UINT", "8#777=511 16#ff_ff=65535 16#100=256"},
      {"malformed", "5#4 5#x"},
      {"UDINT", "16#1_0000=65536"},
      {"INT!", "INT#5=5 int#-5=-5 -INT#32768=-32768 INT#16#7F_FF=32767"},
      {"BYTE!", "BYTE#2#101=5"},
      {"LWORD!", "LWORD#16#FFFFFFFFFFFFFFFF=18446744073709551615"},
      {"BOOL", "TRUE=1 false=0"},
      {"BOOL!", "BOOL#1=1 BOOL#True=1"},
      {"REAL", "1.5 -1_0.2_5E+3=-10.25e+3 1e5 3.4028235e38 1.4e-45"},
      {"LREAL", "3.4028236e38 1e-46"},
      {"REAL!", "REAL#5=5.0"},
      {"LREAL!", "LREAL#-2.5e-3=-2.5e-3"},
      {"TIME!",
       "T#1500ms=1500 time#1d2h3m4s5ms=93784005 T#1h_30m=5400000 T#-5s=-5000 t#2.5s=2500 "
       "T#90m=5400000 T#1ms999us=1 T#2147483647ms=2147483647 T#-2147483648ms=-2147483648"},
      {"LTIME!",
       "LTIME#20ns=20 LT#1.000_001us=1000 LT#0.000000001s=1 LT#106751d=9223286400000000000"},
      {"DATE!",
       "D#1970-01-01=0 DATE#2026-11-21=1795219200 D#2024-02-29=1709164800 D#2106-02-07=4294944000"},
      {"TOD!", "TOD#12:30:15.250=45015250 TIME_OF_DAY#23:59=86340000"},
      {"DT!", "DT#2026-11-21-12:30:15.9=1795264215 DATE_AND_TIME#1970-1-1-0:0:1=1"}};
  for (const auto& [type, list] : types) {
    std::istringstream literals(list);
    for (std::string literal; literals >> literal;) {
      const std::size_t mark = literal.find('=');
      const std::string value = mark == std::string::npos ? literal : literal.substr(mark + 1);
      const bool none = type == "malformed" || type == "out of range";
      EXPECT_EQ(describe(literal.substr(0, mark)), none ? type : type + " " + value) << literal;
    }
  }
  const std::pair<const char*, const char*> others[] = {
      {"- 1", "SINT -1"},
      {"'a$'b$$'", "STRING a'b$"},
      {"''", "STRING "},
      {"'$L$n$R$t$p$41'", "STRING \n\n\r\t\fA"},
      {"'\xC3\xA9\"'", "STRING \xC3\xA9\""},
      {R"("$"$00E9")", "WSTRING \"\xC3\xA9"},
      {R"("$20ac$D83D$de00")", "WSTRING \xE2\x82\xAC\xF0\x9F\x98\x80"},
      {"STRING#'x'", "STRING! x"},
      {"wstring#\"y\"", "WSTRING! y"}};
  for (const auto& [source, expected] : others) EXPECT_EQ(describe(source), expected) << source;
}

// Characters, halves of pairs, and bytes that are no UTF-8.
TEST(Literal, OfWstringHasUnitsInC) {
  const std::pair<const char*, const char*> rows[] = {
      {"\"abc\"", "u\"abc\""},
      {"\"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\"", "u\"\\351\\x20AC\\xD83D\\xDE00\""},
      {"\"$D83D$DE00$DE00x$D800\"", "u\"\\xD83D\\xDE00\\xDE00\" u\"x\\xD800\""},
      {"\"\xE4\x80z\xED\xC3\"", "u\"\\344\\200z\\355\\303\""},
  };
  for (const auto& [source, expected] : rows) {
    EXPECT_EQ(hostkit::literalText(source), expected) << source;
  }
}

TEST(Literal, IsMalformedOrNone) {
  std::istringstream malformed(
      "1__0 1_ _1#0 2#12 3#1 16# 16#G 12abc INT# INT#1.5 INT#x 1. 1.5e 1.e5 1._5 REAL#16#5 -BOOL#1 "
      "-T#5s -INT#-5 T# T#5 T#5x T#1s2h T#1s1s T#1.5h30m T#1h_ T#1.s D#2026-02-30 D#2026-13-01 "
      "D#2026-01 D#2026-01-01-5 TOD#24:00:00 TOD#1 TOD#1:60 TOD#1:1:1. DT#2026-01-01 BOOL#YES 'a "
      "'a'b' '$x' '$4' \"$00G0\" STRING#\"x\" 'a|b'");
  for (std::string source; malformed >> source;) {
    std::replace(source.begin(), source.end(), '|', '\n');
    LiteralValue value;
    EXPECT_NE(hostkit::parseLiteral(source, value), LiteralError::None) << source;
  }
  for (const char* source :
       {"", "-", "x", "a1e5", "-TRUE", "color#red", "x + 1", "f(5)", "%IX0.0"}) {
    EXPECT_EQ(describe(source), "no literal") << source;
  }
}

}  // namespace
