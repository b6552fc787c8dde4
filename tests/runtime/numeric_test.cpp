#include <gtest/gtest.h>

#include <limits>

#include "generated_calls.h"

namespace {

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

}  // namespace
