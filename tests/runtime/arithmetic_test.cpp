#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "velrt.h"

namespace {

template <typename T>
void expectDivision(T (*divide)(T, T), T (*modulo)(T, T)) {
  constexpr T min = std::numeric_limits<T>::min();
  constexpr T max = std::numeric_limits<T>::max();
  struct Row {
    T a, b, quotient, remainder;
  };
  for (const Row& row : {Row{7, 2, 3, 1}, Row{max, 1, max, 0}, Row{max, max, 1, 0},
                         Row{max, 0, 0, 0}, Row{min, 0, 0, 0}}) {
    EXPECT_EQ(divide(row.a, row.b), row.quotient) << +row.a << '/' << +row.b;
    EXPECT_EQ(modulo(row.a, row.b), row.remainder) << +row.a << '%' << +row.b;
  }
  if constexpr (std::is_signed_v<T>) {
    const T minusOne = -1;
    EXPECT_EQ(divide(min, minusOne), min);
    EXPECT_EQ(modulo(min, minusOne), 0);
    EXPECT_EQ(divide(-7, 2), -3);
    EXPECT_EQ(modulo(-7, 2), -1);
    EXPECT_EQ(divide(7, -2), -3);
    EXPECT_EQ(modulo(7, -2), 1);
  }
}

TEST(Division, IsDefinedForEveryOperand) {
  expectDivision<i8>(vel_div_i8, vel_mod_i8);
  expectDivision<i16>(vel_div_i16, vel_mod_i16);
  expectDivision<i32>(vel_div_i32, vel_mod_i32);
  expectDivision<i64>(vel_div_i64, vel_mod_i64);
  expectDivision<u8>(vel_div_u8, vel_mod_u8);
  expectDivision<u16>(vel_div_u16, vel_mod_u16);
  expectDivision<u32>(vel_div_u32, vel_mod_u32);
  expectDivision<u64>(vel_div_u64, vel_mod_u64);
}

TEST(Power, CoversTheLimits) {
  EXPECT_EQ(vel_pow(2, 10), 1024);
  EXPECT_EQ(vel_pow(0, 0), 1);
  EXPECT_EQ(vel_pow(2, -1), 0.5);
  EXPECT_TRUE(std::isnan(vel_pow(-1, 0.5)));
  EXPECT_TRUE(std::isinf(vel_pow(10, 400)));
}

constexpr i64 kMin = std::numeric_limits<i64>::min();
constexpr i64 kMax = std::numeric_limits<i64>::max();
constexpr u64 kMaxU = std::numeric_limits<u64>::max();

TEST(ForLoop, StopsBeforePassingItsEnd) {
  struct Row {
    i64 x, to, by;
    int more;
  };
  for (const Row& row :
       {Row{1, 3, 1, 1}, Row{3, 3, 1, 0}, Row{4, 3, 1, 0}, Row{1, 3, 2, 1}, Row{2, 3, 2, 0},
        Row{3, 1, -2, 1}, Row{2, 1, -2, 0}, Row{0, 1, -1, 0}, Row{1, 3, 0, 0},
        Row{kMax, kMax, 1, 0}, Row{kMin, kMin, -1, 0}, Row{kMin, kMax, kMax, 1},
        Row{kMax, kMin, kMin, 1}, Row{0, kMin, kMin, 1}, Row{-1, kMin, kMin, 0}}) {
    EXPECT_EQ(vel_for_more_i64(row.x, row.to, row.by), row.more)
        << row.x << " to " << row.to << " by " << row.by;
  }
  EXPECT_EQ(vel_for_more_u64(kMaxU - 1, kMaxU, 1), 1);
  EXPECT_EQ(vel_for_more_u64(kMaxU, kMaxU, 1), 0);
  EXPECT_EQ(vel_for_more_u64(0, 0, -1), 0);
  EXPECT_EQ(vel_for_more_u64(kMaxU, 0, kMin), 1);
  EXPECT_EQ(vel_for_more_u64(1, kMaxU, 0), 0);
}

}  // namespace
