#include <gtest/gtest.h>

#include "generated_calls.h"

namespace {

template <typename T>
void expectBits(u8 (*getBit)(T, i64), T (*setBit)(T, i64, int)) {
  constexpr int bits = sizeof(T) * 8;
  const auto ones = static_cast<T>(-1);

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
}

TEST(IntegerBits, AreReadAndWritten) {
#define EXPECT_BITS(type) expectBits(get_bit_##type, set_bit_##type);
  FOR_EACH_INTEGER(EXPECT_BITS)
}

TEST(Macros, EvaluateTheirParametersOnce) { EXPECT_EQ(count_evaluations(3), 4); }

}  // namespace
