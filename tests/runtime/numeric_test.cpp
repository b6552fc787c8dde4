#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "generated_calls.h"

namespace {

TEST(RealFunctions, TakeTheirWholeRange) {
  const f64 pi = std::acos(-1.0);
  for (const f64 difference :
       {SQRT(6.25) - 2.5, LOG(1000) - 3, EXP(0) - 1, EXPT(2, -2) - 0.25, FABS(-2.5F) - 2.5,
        LN(EXP(2)) - 2, SIN(pi / 6) - 0.5, COS(pi) + 1, TAN(pi / 4) - 1, ASIN(-1) + pi / 2,
        ACOS(-1) - pi, ATAN(HUGE_VAL) - pi / 2}) {
    EXPECT_NEAR(difference, 0, 1e-15);
  }
  for (const f64 infinite : {LN(0), LOG(0), -EXP(1000)}) EXPECT_EQ(infinite, -HUGE_VAL);
  for (const f64 nan : {SQRT(-1), LN(-1), LOG(-1), ASIN(1.5), ACOS(-1.5), SIN(HUGE_VAL),
                        COS(HUGE_VAL), TAN(HUGE_VAL), EXPT(-8, 1.0 / 3)}) {
    EXPECT_TRUE(std::isnan(nan));
  }
}

template <typename T>
void expectCalls(T (*abs)(T), u8 (*getBit)(T, i64), T (*setBit)(T, i64, int),
                 T (*mux)(T, T, T, T)) {
  constexpr bool isSigned = std::is_signed_v<T>;
  constexpr T min = std::numeric_limits<T>::min();
  constexpr T max = std::numeric_limits<T>::max();
  constexpr int bits = sizeof(T) * 8;
  const auto ones = static_cast<T>(-1);

  EXPECT_EQ(abs(min), min);
  EXPECT_EQ(abs(max), max);
  EXPECT_EQ(abs(ones), isSigned ? 1 : max);

  for (int n = 0; n < bits; ++n) {
    EXPECT_EQ(getBit(static_cast<T>(u64{1} << n), n), 1) << n;
    EXPECT_EQ(getBit(static_cast<T>(~(u64{1} << n)), n), 0) << n;
    EXPECT_EQ(setBit(0, n, 256), static_cast<T>(u64{1} << n)) << n;
    EXPECT_EQ(setBit(ones, n, 0), static_cast<T>(~(u64{1} << n))) << n;
  }
  for (const i64 n : {i64{-1}, i64{bits}, i64{64}, INT64_MIN, INT64_MAX}) {
    EXPECT_EQ(getBit(ones, n), 0) << n;
    EXPECT_EQ(setBit(ones, n, 0), ones) << n;
    EXPECT_EQ(setBit(0, n, 1), 0) << n;
  }

  EXPECT_EQ(mux(0, min, max, ones), min);
  EXPECT_EQ(mux(1, min, max, ones), max);
  EXPECT_EQ(mux(2, min, max, ones), ones);
  EXPECT_EQ(mux(3, min, max, ones), ones);
  EXPECT_EQ(mux(max, 0, 1, 2), 2);
  EXPECT_EQ(mux(min, 0, 1, 2), 0);
  EXPECT_EQ(mux(ones, 0, 1, 2), isSigned ? 0 : 2);
}

TEST(IntegerCalls, KeepEveryTypesValues) {
#define EXPECT_CALLS(type) expectCalls(abs_##type, get_bit_##type, set_bit_##type, mux_##type);
  FOR_EACH_INTEGER(EXPECT_CALLS)
  EXPECT_EQ(mux_real(0, 0.1F, 0.5F), 0.1F);
  EXPECT_EQ(mux_real(UINT64_MAX, 0.5F, 0.1F), 0.1F);
  EXPECT_EQ(count_evaluations(3), 4);
}

TEST(Bcd, HoldsTwoDigits) {
  for (int n = 0; n <= 99; ++n) EXPECT_EQ(INT_TO_BCD(n), n / 10 * 16 + n % 10);
  for (int n = 0; n <= 99; ++n) EXPECT_EQ(BCD_TO_INT(INT_TO_BCD(n)), n);
  for (const int n : {100, UINT16_MAX + 0}) EXPECT_EQ(INT_TO_BCD(n), 0x99);
  EXPECT_EQ(INT_TO_BCD(INT16_MIN), 0);
  EXPECT_EQ(BCD_TO_INT(0xA7), 7);
  EXPECT_EQ(BCD_TO_INT(0x7A), 70);
}

}  // namespace
