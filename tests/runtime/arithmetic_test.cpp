// The rest of the arithmetic is proven by tests/execution.
#include <gtest/gtest.h>

#include <limits>

#include "velrt.h"

namespace {

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
  EXPECT_EQ(vel_for_more_u64(kMaxU, 1, 0), 0);
}

TEST(IntegerBits, AreThoseOfTheWidth) {
  for (const i64 n : {i64{-1}, i64{8}, i64{64}, INT64_MIN, INT64_MAX}) {
    EXPECT_EQ(vel_bit(kMaxU, 8, n), 0) << n;
    EXPECT_EQ(vel_with_bit(5, 8, n, 1), 5u) << n;
    EXPECT_EQ(vel_with_bit(5, 8, n, 0), 5u) << n;
  }
  EXPECT_EQ(vel_with_bit(5, 8, 7, 256), 0x85u);
  u8 bytes[2] = {0, 0xF0};
  const vel_bit_param param = {bytes, 12};
  setBitOfParam(&param, 11, 1);
  setBitOfParam(&param, 12, 0);
  EXPECT_EQ(bytes[1], 0xF8);
  EXPECT_EQ(getBitOfParam(&param, 12), 0);
}

}  // namespace
