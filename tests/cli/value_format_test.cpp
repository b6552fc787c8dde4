#include "cli/value_format.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>

namespace velc {
namespace {

using vel::BasicDataType;

template <typename T>
std::string text(BasicDataType type, T value, std::string_view typeName = "") {
  char bytes[sizeof value];
  std::memcpy(bytes, &value, sizeof value);
  return valueText(type, typeName, {bytes, sizeof bytes});
}

TEST(ValueFormat, IntegersAndBitStrings) {
  EXPECT_EQ(text<std::int8_t>(BasicDataType::SInt, -128), "-128");
  EXPECT_EQ(text<std::uint8_t>(BasicDataType::USInt, 255, "USINT"), "255");
  EXPECT_EQ(text<std::uint64_t>(BasicDataType::ULInt, UINT64_MAX, "ULINT"), "18446744073709551615");
  EXPECT_EQ(text<std::int64_t>(BasicDataType::LInt, INT64_MIN), "-9223372036854775808");
  EXPECT_EQ(text<std::uint8_t>(BasicDataType::USInt, 0x1F, "BYTE"), "16#1F");
  EXPECT_EQ(text<std::uint16_t>(BasicDataType::UInt, 0, "WORD"), "16#0");
  EXPECT_EQ(text<std::uint32_t>(BasicDataType::UDInt, 0xBEEF, "DWORD"), "16#BEEF");
  EXPECT_EQ(text<std::uint64_t>(BasicDataType::ULInt, UINT64_MAX, "LWORD"), "16#FFFFFFFFFFFFFFFF");
  EXPECT_EQ(text<std::uint8_t>(BasicDataType::Bool, 0), "FALSE");
  EXPECT_EQ(text<std::uint8_t>(BasicDataType::Bool, 2), "TRUE");
}

TEST(ValueFormat, RealsAreTheShortestThatReadBack) {
  struct Row {
    double value;
    const char* text;
  };
  for (const Row& row : {
           Row{0, "0.0"},
           Row{-0.0, "-0.0"},
           Row{1, "1.0"},
           Row{100, "100.0"},
           Row{-2.5, "-2.5"},
           Row{1234.5678, "1234.5678"},
           Row{0.1, "0.1"},
           Row{0.0001, "0.0001"},
           Row{0.000125, "0.000125"},
           Row{0.00001, "1.0e-05"},
           Row{1e15, "1000000000000000.0"},
           Row{1234567890123456, "1234567890123456.0"},
           Row{1e16, "1.0e+16"},
           Row{1.5e20, "1.5e+20"},
           Row{-1.7976931348623157e308, "-1.7976931348623157e+308"},
           Row{5e-324, "5.0e-324"},
           Row{std::numeric_limits<double>::quiet_NaN(), "NaN"},
           Row{std::numeric_limits<double>::infinity(), "Inf"},
           Row{-std::numeric_limits<double>::infinity(), "-Inf"},
       }) {
    EXPECT_EQ(text(BasicDataType::LReal, row.value), row.text);
  }
  EXPECT_EQ(text(BasicDataType::Real, 0.1f), "0.1");
  EXPECT_EQ(text(BasicDataType::Real, 16777216.0f), "16777216.0");
  EXPECT_EQ(text(BasicDataType::Real, 3.4028235e38f), "3.4028235e+38");
}

TEST(ValueFormat, TimesAndDates) {
  EXPECT_EQ(text<std::int32_t>(BasicDataType::Time, 1500), "T#1500ms");
  EXPECT_EQ(text<std::int32_t>(BasicDataType::Time, -1), "T#-1ms");
  EXPECT_EQ(text<std::int64_t>(BasicDataType::LTime, 20), "LTIME#20ns");
  EXPECT_EQ(text<std::uint32_t>(BasicDataType::Date, 0), "D#1970-01-01");
  EXPECT_EQ(text<std::uint32_t>(BasicDataType::Date, 1795219200), "D#2026-11-21");
  EXPECT_EQ(text<std::uint32_t>(BasicDataType::DateAndTime, 1795219200 + 45015),
            "DT#2026-11-21-12:30:15");
  EXPECT_EQ(text<std::uint32_t>(BasicDataType::DateAndTime, UINT32_MAX), "DT#2106-02-07-06:28:15");
  EXPECT_EQ(text<std::uint32_t>(BasicDataType::TimeOfDay, 45015250), "TOD#12:30:15.250");
  EXPECT_EQ(text<std::uint32_t>(BasicDataType::TimeOfDay, 5), "TOD#00:00:00.005");
  EXPECT_EQ(text<std::uint32_t>(BasicDataType::TimeOfDay, 86399000), "TOD#23:59:59");
}

std::string wide(std::u16string_view units) {
  return valueText(BasicDataType::WString, "WSTRING",
                   {reinterpret_cast<const char*>(units.data()), units.size() * sizeof units[0]});
}

TEST(ValueFormat, StringsEscapeWhatTheirLiteralsNeedEscaped) {
  const auto narrow = [](std::string_view bytes) {
    return valueText(BasicDataType::String, "STRING", bytes);
  };
  EXPECT_EQ(narrow(""), "''");
  EXPECT_EQ(narrow(std::string_view("ab\0cd", 5)), "'ab'");
  EXPECT_EQ(narrow("it's $5 \"x\""), "'it$'s $$5 \"x\"'");
  EXPECT_EQ(narrow("\t\n\f\r\x01\x7F"), "'$T$L$P$R$01$7F'");
  EXPECT_EQ(narrow("\xC3\xA4\xE2\x82\xAC"), "'\xC3\xA4\xE2\x82\xAC'");
  EXPECT_EQ(narrow("\xE4 \xC3"), "'$E4 $C3'");
  EXPECT_EQ(narrow("\xC0\x80\xED\xA0\x80"), "'$C0$80$ED$A0$80'");

  EXPECT_EQ(wide(u"it's \"x\""), "\"it's $\"x$\"\"");
  EXPECT_EQ(wide(u"\u00E4\u20AC\U0001F600\x01"), "\"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80$0001\"");
  constexpr char16_t halves[] = {0xD83D, 'x', 0xDE00, 0};
  EXPECT_EQ(wide(halves), "\"$D83Dx$DE00\"");
}

}  // namespace
}  // namespace velc
