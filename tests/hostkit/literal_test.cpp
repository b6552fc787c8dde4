#include "hostkit/literal.h"

#include <gtest/gtest.h>

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

struct Row {
  std::string source;
  std::string expected;
};

TEST(Literal, HasAValueAndAType) {
  const Row rows[] = {
      {"0", "SINT 0"},
      {"127", "SINT 127"},
      {"128", "INT 128"},
      {"-128", "SINT -128"},
      {"-129", "INT -129"},
      {"- 1", "SINT -1"},
      {"+5", "SINT 5"},
      {"-0", "SINT 0"},
      {"32_768", "DINT 32768"},
      {"2147483648", "LINT 2147483648"},
      {"-9223372036854775808", "LINT -9223372036854775808"},
      {"9223372036854775808", "ULINT 9223372036854775808"},
      {"18446744073709551615", "ULINT 18446744073709551615"},
      {"18446744073709551616", "out of range"},
      {"-9223372036854775809", "out of range"},
      {"2#1010_1010", "USINT 170"},
      {"8#777", "UINT 511"},
      {"5#4", "malformed"},
      {"5#x", "malformed"},
      {"16#ff_ff", "UINT 65535"},
      {"16#100", "UINT 256"},
      {"16#1_0000", "UDINT 65536"},
      {"16#1_0000_0000", "ULINT 4294967296"},
      {"16#FFFFFFFFFFFFFFFF", "ULINT 18446744073709551615"},
      {"-16#80", "SINT -128"},
      {"16#10000000000000000", "out of range"},
      {"INT#5", "INT! 5"},
      {"int#-5", "INT! -5"},
      {"-INT#32768", "INT! -32768"},
      {"INT#32768", "out of range"},
      {"INT#16#7F_FF", "INT! 32767"},
      {"BYTE#2#101", "BYTE! 5"},
      {"BYTE#256", "out of range"},
      {"BYTE#-1", "out of range"},
      {"LWORD#16#FFFFFFFFFFFFFFFF", "LWORD! 18446744073709551615"},
      {"TRUE", "BOOL 1"},
      {"false", "BOOL 0"},
      {"BOOL#1", "BOOL! 1"},
      {"BOOL#True", "BOOL! 1"},
      {"BOOL#2", "out of range"},
      {"1.5", "REAL 1.5"},
      {"-1_0.2_5E+3", "REAL -10.25e+3"},
      {"1e5", "REAL 1e5"},
      {"3.4028235e38", "REAL 3.4028235e38"},
      {"3.4028236e38", "LREAL 3.4028236e38"},
      {"1.4e-45", "REAL 1.4e-45"},
      {"1e-46", "LREAL 1e-46"},
      {"1e400", "out of range"},
      {"REAL#5", "REAL! 5.0"},
      {"LREAL#-2.5e-3", "LREAL! -2.5e-3"},
      {"REAL#1e39", "out of range"},
      {"T#1500ms", "TIME! 1500"},
      {"time#1d2h3m4s5ms", "TIME! 93784005"},
      {"T#1h_30m", "TIME! 5400000"},
      {"T#-5s", "TIME! -5000"},
      {"t#2.5s", "TIME! 2500"},
      {"T#90m", "TIME! 5400000"},
      {"T#1ms999us", "TIME! 1"},
      {"T#2147483647ms", "TIME! 2147483647"},
      {"T#2147483648ms", "out of range"},
      {"T#-2147483648ms", "TIME! -2147483648"},
      {"T#25d", "out of range"},
      {"LTIME#20ns", "LTIME! 20"},
      {"LT#1.000_001us", "LTIME! 1000"},
      {"LT#0.000000001s", "LTIME! 1"},
      {"LT#106751d", "LTIME! 9223286400000000000"},
      {"LT#106752d", "out of range"},
      {"LT#99999999999999999999d", "out of range"},
      {"D#1970-01-01", "DATE! 0"},
      {"DATE#2026-11-21", "DATE! 1795219200"},
      {"D#2024-02-29", "DATE! 1709164800"},
      {"D#2106-02-07", "DATE! 4294944000"},
      {"D#2106-02-08", "out of range"},
      {"D#1969-12-31", "out of range"},
      {"TOD#12:30:15.250", "TOD! 45015250"},
      {"TIME_OF_DAY#23:59", "TOD! 86340000"},
      {"DT#2026-11-21-12:30:15.9", "DT! 1795264215"},
      {"DATE_AND_TIME#1970-1-1-0:0:1", "DT! 1"},
      {"'a$'b$$'", "STRING a'b$"},
      {"''", "STRING "},
      {"'$L$n$R$t$p$41'", "STRING \n\n\r\t\fA"},
      {"'\xC3\xA9\"'", "STRING \xC3\xA9\""},
      {R"("$"$00E9")", "WSTRING \"\xC3\xA9"},
      {R"("$20ac$D83D$de00")", "WSTRING \xE2\x82\xAC\xF0\x9F\x98\x80"},
      {"STRING#'x'", "STRING! x"},
      {"wstring#\"y\"", "WSTRING! y"},
  };
  for (const Row& row : rows) EXPECT_EQ(describe(row.source), row.expected) << row.source;
}

// Characters, halves of pairs, and bytes that are no UTF-8.
TEST(Literal, OfWstringHasUnitsInC) {
  const std::pair<const char*, const char*> rows[] = {
      {"\"abc\"", "u\"abc\""},
      {"\"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\"", "(const u16[]){233, 8364, 55357, 56832, 0}"},
      {"\"$D83D$DE00$DE00x$D800\"", "(const u16[]){55357, 56832, 56832, 120, 55296, 0}"},
      {"\"\xE4\x80z\xED\xC3\"", "(const u16[]){228, 128, 122, 237, 195, 0}"},
  };
  for (const auto& [source, expected] : rows) {
    EXPECT_EQ(hostkit::literalText(source), expected) << source;
  }
}

TEST(Literal, IsMalformedOrNone) {
  for (const char* source :
       {"1__0",           "1_",           "_1#0",  "2#12",         "3#1",          "16#",
        "16#G",           "12abc",        "INT#",  "INT#1.5",      "INT#x",        "1.",
        "1.5e",           "1.e5",         "1._5",  "REAL#16#5",    "-BOOL#1",      "-T#5s",
        "-INT#-5",        "T#",           "T#5",   "T#5x",         "T#1s2h",       "T#1s1s",
        "T#1.5h30m",      "T#1h_",        "T#1.s", "D#2026-02-30", "D#2026-13-01", "D#2026-01",
        "D#2026-01-01-5", "TOD#24:00:00", "TOD#1", "TOD#1:60",     "TOD#1:1:1.",   "DT#2026-01-01",
        "BOOL#YES",       "'a",           "'a'b'", "'$x'",         "'$4'",         "\"$00G0\"",
        "STRING#\"x\"",   "'a\nb'"}) {
    LiteralValue value;
    EXPECT_NE(hostkit::parseLiteral(source, value), LiteralError::None) << source;
  }
  for (const char* source :
       {"", "-", "x", "a1e5", "-TRUE", "color#red", "x + 1", "f(5)", "%IX0.0"}) {
    EXPECT_EQ(describe(source), "no literal") << source;
  }
}

}  // namespace
