#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "generated_calls.h"

namespace {

constexpr f64 kPi = 3.14159265358979323846;

TEST(RealFunctions, TakeTheirWholeRange) {
  EXPECT_EQ(SQRT(6.25), 2.5);
  EXPECT_EQ(LOG(1000), 3);
  EXPECT_EQ(EXP(0), 1);
  EXPECT_EQ(EXPT(2, -2), 0.25);
  EXPECT_EQ(FABS(-2.5F), 2.5);
  EXPECT_FALSE(std::signbit(FABS(-0.0)));
  EXPECT_DOUBLE_EQ(LN(EXP(2)), 2);
  EXPECT_DOUBLE_EQ(SIN(kPi / 6), 0.5);
  EXPECT_DOUBLE_EQ(COS(kPi), -1);
  EXPECT_DOUBLE_EQ(TAN(kPi / 4), 1);
  EXPECT_DOUBLE_EQ(ASIN(-1), -kPi / 2);
  EXPECT_DOUBLE_EQ(ACOS(-1), kPi);
  EXPECT_DOUBLE_EQ(ATAN(HUGE_VAL), kPi / 2);
  for (const f64 nan : {SQRT(-1), LN(-1), LOG(-1), ASIN(1.5), ACOS(-1.5), SIN(HUGE_VAL),
                        COS(HUGE_VAL), TAN(HUGE_VAL), EXPT(-8, 1.0 / 3)}) {
    EXPECT_TRUE(std::isnan(nan));
  }
  EXPECT_EQ(LN(0), -HUGE_VAL);
  EXPECT_EQ(LOG(0), -HUGE_VAL);
  EXPECT_EQ(EXP(1000), HUGE_VAL);
}

template <typename T>
struct IntegerCalls {
  T (*abs)(T);
  u8 (*getBit)(T, i64);
  T (*setBit)(T, i64, int);
  T (*mux)(T, T, T, T);
};

template <typename T>
void expectIntegerCalls(const IntegerCalls<T>& calls) {
  using Limits = std::numeric_limits<T>;
  constexpr T min = Limits::min();
  constexpr T max = Limits::max();
  constexpr int bits = sizeof(T) * 8;
  const auto minusOne = static_cast<T>(-1);

  EXPECT_EQ(calls.abs(min), min);
  EXPECT_EQ(calls.abs(max), max);
  EXPECT_EQ(calls.abs(minusOne), std::is_signed_v<T> ? 1 : max);

  for (int n = 0; n < bits; ++n) {
    EXPECT_EQ(calls.getBit(minusOne, n), 1) << n;
    EXPECT_EQ(calls.getBit(static_cast<T>(u64{1} << n), n), 1) << n;
    EXPECT_EQ(calls.setBit(0, n, 256), static_cast<T>(u64{1} << n)) << n;
    EXPECT_EQ(calls.setBit(minusOne, n, 0), static_cast<T>(~(u64{1} << n))) << n;
  }
  for (const i64 n : {i64{-1}, i64{bits}, i64{64}, i64{128}, INT64_MIN, INT64_MAX}) {
    EXPECT_EQ(calls.getBit(minusOne, n), 0) << n;
    EXPECT_EQ(calls.setBit(minusOne, n, 0), minusOne) << n;
    EXPECT_EQ(calls.setBit(0, n, 1), 0) << n;
  }

  EXPECT_EQ(calls.mux(0, min, max, minusOne), min);
  EXPECT_EQ(calls.mux(1, min, max, minusOne), max);
  EXPECT_EQ(calls.mux(2, min, max, minusOne), minusOne);
  EXPECT_EQ(calls.mux(3, min, max, minusOne), minusOne);
  EXPECT_EQ(calls.mux(max, min, 1, 2), 2);
  EXPECT_EQ(calls.mux(min, 5, 1, 2), 5);
  EXPECT_EQ(calls.mux(minusOne, 5, 1, 2), std::is_signed_v<T> ? 5 : 2);
}

TEST(IntegerCalls, KeepEveryTypesValues) {
#define EXPECT_CALLS(type) \
  expectIntegerCalls<type>({abs_##type, get_bit_##type, set_bit_##type, mux_##type});
  FOR_EACH_INTEGER(EXPECT_CALLS)
}

TEST(Mux, SelectsReals) {
  EXPECT_EQ(mux_f32(1, 0.5F, 0.1F), 0.1F);
  EXPECT_EQ(mux_f32(-1, 0.5F, 0.1F), 0.5F);
  EXPECT_EQ(mux_f64(UINT64_MAX, 1e300, 5e-324), 5e-324);
}

TEST(Macros, EvaluateTheirArgumentsOnce) {
  int x = 0;
  int k = 0;
  count_evaluations(&x, &k);
  EXPECT_EQ(x, 1);
  EXPECT_EQ(k, 1);
}

TEST(Bcd, HoldsTwoDigits) {
  for (int n = 0; n <= 99; ++n) EXPECT_EQ(BCD_TO_INT(INT_TO_BCD(n)), n);
  EXPECT_EQ(INT_TO_BCD(42), 0x42);
  EXPECT_EQ(INT_TO_BCD(100), 0x99);
  EXPECT_EQ(INT_TO_BCD(UINT16_MAX), 0x99);
  EXPECT_EQ(INT_TO_BCD(INT16_MIN), 0);
  EXPECT_EQ(BCD_TO_INT(0xA7), 7);
  EXPECT_EQ(BCD_TO_INT(0x7A), 70);
  EXPECT_EQ(BCD_TO_INT(0xFF), 0);
}

}  // namespace
