#include <gtest/gtest.h>

#include "velrt.h"

namespace {

TEST(DeviceMemory, BitsCountFromTheLowestOfEachByte) {
  sbit(11, 7);
  EXPECT_EQ(_m[1], 0x08);
  EXPECT_EQ(gbit(11), 1);
  EXPECT_EQ(gbit(10), 0);
  sbit(11, 0);
  EXPECT_EQ(_m[1], 0);
}

TEST(DeviceMemory, UnitsAreLittleEndianAndMayLieAnywhere) {
  VEL_MEM(u16, 3) = 0x1234;
  EXPECT_EQ(_m[3], 0x34);
  EXPECT_EQ(_m[4], 0x12);
  VEL_MEM(f64, 9) = -1.5;
  const f64 unaligned = VEL_MEM(f64, 9);
  EXPECT_EQ(unaligned, -1.5);
}

TEST(DeviceMemory, NothingOutsideIsReadOrWritten) {
  const u32 end = 16384 + 1024 + 1024;
  ASSERT_EQ(sizeof _m, end);
  VEL_MEM(u32, end - 4) = 0x89ABCDEF;
  EXPECT_EQ(gbit(end * 8 - 1), 1);
  for (const u32 bit : {end * 8, UINT32_MAX}) {
    sbit(bit, 1);
    EXPECT_EQ(gbit(bit), 0) << bit;
  }
  for (const u32 offset : {end - 3, end, end + 1, UINT32_MAX - 1}) {
    VEL_MEM(u32, offset) = 0xFFFFFFFF;
    const u32 outside = VEL_MEM(u32, offset);
    EXPECT_EQ(outside, 0u) << offset;
  }
  EXPECT_EQ(_m[end - 1], 0x89);
}

}  // namespace
