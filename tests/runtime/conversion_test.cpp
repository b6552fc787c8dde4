#include <gtest/gtest.h>

#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <sstream>
#include <string>

#include "velrt.h"

namespace {

template <typename T>
struct Type {
  T (*read)(const void* text, int wide);
  char* (*print)(T, void*);
};
constexpr Type<i64> kINT{
    [](const void* text, int wide) {
      return static_cast<i64>(vel_read_integer(text, wide, INT16_MIN, INT16_MAX));
    },
    vel_print_signed};
constexpr Type<int> kBOOL{
    [](const void* text, int wide) -> int { return vel_read_bool(text, wide); }, vel_print_bool};
constexpr Type<f32> kREAL{vel_read_real, vel_print_real};
constexpr Type<f64> kLREAL{vel_read_lreal, vel_print_lreal};
constexpr Type<i32> kTIME{vel_read_time, vel_print_time};
constexpr Type<i64> kLTIME{vel_read_ltime, vel_print_ltime};
constexpr Type<u32> kDATE{vel_read_date, vel_print_date};
constexpr Type<u32> kTOD{vel_read_tod, vel_print_tod};
constexpr Type<u32> kDT{vel_read_dt, vel_print_dt};

std::basic_string<u16> widened(const std::string& text) { return {text.begin(), text.end()}; }

template <typename T>
std::string printed(const Type<T>& type, T value) {
  char text[VEL_PRINTED_UNITS];
  return type.print(value, text);
}

// Tells -0.0 from 0.0 and finds NaN equal to itself.
template <typename T>
std::string bytesOf(const T& value) {
  return {reinterpret_cast<const char*>(&value), sizeof value};
}

template <typename T>
T reading(const Type<T>& type, const std::string& text) {
  const T value = type.read(text.c_str(), 0);
  EXPECT_EQ(bytesOf(value), bytesOf(type.read(widened(text).c_str(), 1))) << text;
  return value;
}

template <typename T>
void expectRoundTrip(const Type<T>& type, T value) {
  const std::string text = printed(type, value);
  EXPECT_EQ(bytesOf(value), bytesOf(reading(type, text))) << text;
}

// `rows` are separated by '|': a text, '=', and how the value that it has is printed. A row
// without '=' has no value.
template <typename T>
void expectReadings(const Type<T>& type, const std::string& rows) {
  std::istringstream in(rows);
  for (std::string row; std::getline(in, row, '|');) {
    const std::size_t mark = row.find('=');
    const std::string wanted =
        mark == std::string::npos ? printed(type, T{}) : row.substr(mark + 1);
    EXPECT_EQ(printed(type, reading(type, row.substr(0, mark))), wanted) << row;
  }
}

TEST(IntegerTexts, AreReadWholeOrNotAtAll) {
  expectReadings(kINT,
                 " \t+42 \t=42|-1_000=-1000|16#7f=127|-16#1F=-31|2#1010_1010=170|8#17=15|0007=7|"
                 "16#FFFF=32767||-|12abc|1 2|- 5|--5|1__2|_12|12_|1.0|1e3|3#12|2#2|8#8|16#|16#G|"
                 "16#-1|16 #1|0x1F|INT#5|\xC4\xB1|5\n");
  const u16 digitsInTheLowByte[] = {0x0131, 0x0132, 0};
  EXPECT_EQ(kINT.read(digitsInTheLowByte, 1), 0);
}

TEST(BoolTexts, AreWordsOrDigits) {
  expectReadings(kBOOL, "TRUE=TRUE| true =TRUE|1=TRUE|False|0||TRUE1|11|2|yes|TRU|+1");
}

TEST(RealTexts, AreReadWholeOrNotAtAll) {
  expectReadings(
      kLREAL,
      "42=42.0| -1_0.2_5e+0_1 =-102.5|lreal#-1.5E-3=-0.0015|-REAL#1.5=-1.5|16#1F=31.0|"
      "-2#11=-3.0|-0=-0.0|nan=NaN|inf=Inf|-INF=-Inf|1e400=1.7976931348623157e+308|"
      "-1e99999999999999999999=-1.7976931348623157e+308|1e-400|0e99999999999999999999|"
      "16#20_0000_0000_0001=9007199254740992.0|"
      "16#20_0000_0000_0001_0000_0000_0001=2.5353012004564594e+30||.5|5.|1.5x|1e|1e+|1,5|"
      "0x10|1.5e1.5|infinity|16#1.5|16#|-REAL#-1|nan(1)|1 .5|1._5|1_.5");
  expectReadings(kREAL,
                 "1e39=3.4028235e+38|-16#1_0000_0000_0000_0000_0000_0000_0000_0000=-3.4028235e+38|"
                 "-inf=-Inf|1.000000059604644775390625000000001=1.0000001");
  // The middle of two neighbours, and above it by a digit far away.
  const std::string middle = "9007199254740993" + std::string(2000, '0');
  expectReadings(kLREAL, middle + "e-2000=9007199254740992.0|" + middle +
                             "1e-2001=9007199254740994.0|0." + std::string(5000, '0') +
                             "12e5002=12.0");
}

TEST(RealTexts, HaveTheFormThatVariablesAreShownIn) {
  expectReadings(kLREAL,
                 "0=0.0|100=100.0|0.00012=0.00012|12e-6=1.2e-05|1234567890123456e0="
                 "1234567890123456.0|10000000000000000=1.0e+16|5e-324=5.0e-324|-1e-100=-1.0e-100");
}

// The digits without those that only place the decimal point.
std::string significantDigits(const std::string& text) {
  std::string digits;
  for (const char c : text.substr(0, text.find('e'))) {
    if (c > '0' || (c == '0' && !digits.empty())) digits += c;
  }
  return digits.erase(digits.find_last_not_of('0') + 1);
}

template <typename Bits, typename T>
void expectShortestTexts(const Type<T>& type) {
  const auto check = [&type](T value) {
    if (!std::isfinite(value)) return;
    expectRoundTrip(type, value);
    char text[128];
    *std::to_chars(text, text + sizeof text, value, std::chars_format::scientific).ptr = 0;
    EXPECT_EQ(significantDigits(printed(type, value)), significantDigits(text));
    std::snprintf(text, sizeof text, "%.40e", static_cast<f64>(value));
    EXPECT_EQ(reading(type, text), value) << text;
  };
  for (T power = std::numeric_limits<T>::denorm_min(); std::isfinite(power); power *= 2) {
    check(power);
    check(std::nextafter(power, T{0}));
  }
  std::mt19937_64 random(2);
  for (int i = 0; i < 5000; ++i) {
    const auto bits = static_cast<Bits>(random());
    T value;
    std::memcpy(&value, &bits, sizeof value);
    check(value);
    check(static_cast<T>(random() % 1000000) / 1000);
  }
}

TEST(RealTexts, AreTheShortestThatReadBack) {
  expectShortestTexts<u32>(kREAL);
  expectShortestTexts<u64>(kLREAL);
}

TEST(RealTexts, AreTheSameInEveryLocale) {
  ASSERT_NE(nullptr, std::setlocale(LC_NUMERIC, "de_DE.UTF-8")) << "LOCPATH names the folder";
  ASSERT_STREQ(",", std::localeconv()->decimal_point);
  expectReadings(kLREAL, "-1234.5e50=-1.2345e+53|1.5=1.5|1,5");
  std::setlocale(LC_NUMERIC, "C");
}

TEST(DurationTexts, AreLiterals) {
  expectReadings(kTIME,
                 "T#1s500ms=T#1500ms| time#1h_30m =T#5400000ms|-5M=T#-300000ms|LTIME#1999us=T#1ms|"
                 "T#-1.9999s=T#-1999ms|1d2h3m4s5ms6us7ns=T#93784005ms|T#90m=T#5400000ms|"
                 "T#30d=T#2147483647ms|T#-30d=T#-2147483648ms|1_000ms=T#1000ms|"
                 "T#99999999999999999999d=T#2147483647ms||T#|5|T#5|1s1h|1s1s|1.5h30m|1h_|1h__2m|"
                 "1 h|1mss|1.s|.5s|TOD#1s|T#+-1s|-T#1s|1s 2ms");
  expectReadings(kLTIME,
                 "LT#1.5us=LTIME#1500ns|-106752d=LTIME#-9223372036854775808ns|"
                 "9223372036854775808ns=LTIME#9223372036854775807ns|"
                 "0.99999999999999d=LTIME#86399999999999ns|0.1111111111111d=LTIME#9599999999999ns");
}

TEST(CalendarTexts, AreLiterals) {
  expectReadings(
      kDATE,
      "D#1970-01-01=D#1970-01-01|date#2024-2-29=D#2024-02-29| 2000-02-29 =D#2000-02-29|"
      "D#1969-12-31=D#1970-01-01|D#9999-12-31=D#2106-02-07||D#|2023-02-29|1900-02-29|"
      "2100-02-29|2024-04-31|2024-13-01|2024-00-01|2024-01-00|2024-01|0-01-01|10000-01-01|"
      "DT#2024-01-01|2024-01-01-");
  expectReadings(kDT,
                 "date_and_time#2026-11-21-12:30=DT#2026-11-21-12:30:00|"
                 "1970-01-01-00:00:59.999=DT#1970-01-01-00:00:59|"
                 "DT#2106-02-07-06:28:16=DT#2106-02-07-06:28:15|DT#1969-12-31-23:59:59||"
                 "2024-01-01|2024-01-01 12:00|2024-01-01-24:00|2024-02-30-12:00");
  expectReadings(kTOD,
                 "time_of_day#23:59:59.9999=TOD#23:59:59.999|1:2=TOD#01:02:00|"
                 "0:00:00.05=TOD#00:00:00.050||24:00:00|12:60|12:00:60|12|12:|12:00:|12:00:00.|"
                 "D#12:00");
  EXPECT_EQ(reading(kDT, "DT#2026-11-21-12:30:15"), 1795264215u);
  EXPECT_EQ(printed(kTOD, UINT32_MAX), "TOD#1193:02:47.295");
}

TEST(TimeTexts, ReadBack) {
  std::mt19937_64 random(4);
  for (int i = 0; i < 5000; ++i) {
    const u64 bits = random() >> (random() % 64);
    expectRoundTrip(kTIME, static_cast<i32>(bits));
    expectRoundTrip(kLTIME, static_cast<i64>(bits));
    expectRoundTrip(kDT, static_cast<u32>(bits));
    expectRoundTrip(kTOD, static_cast<u32>(bits % 86400000));
  }
  for (u32 day = 0; day <= UINT32_MAX / 86400; ++day) expectRoundTrip(kDATE, day * 86400);
}

}  // namespace
