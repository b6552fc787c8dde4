#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "velrt.h"

namespace {

class DeviceMemory : public testing::Test {
 protected:
  void SetUp() override { std::memset(_m, 0, sizeof _m); }
};

TEST_F(DeviceMemory, LaysTheAreasOneAfterTheOther) {
  EXPECT_EQ(sizeof _m, 16384u + 1024u + 1024u);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(_m) % 8, 0u);
}

TEST_F(DeviceMemory, BitsCountFromTheLowestOfEachByte) {
  sbit(0, 1);
  sbit(11, 7);
  EXPECT_EQ(_m[0], 0x01);
  EXPECT_EQ(_m[1], 0x08);
  EXPECT_EQ(gbit(0), 1);
  EXPECT_EQ(gbit(10), 0);
  EXPECT_EQ(gbit(11), 1);
  sbit(11, 0);
  EXPECT_EQ(_m[1], 0);
}

TEST_F(DeviceMemory, UnitsAreLittleEndianAndMayLieAnywhere) {
  VEL_MEM(u16, 3) = 0x1234;
  EXPECT_EQ(_m[3], 0x34);
  EXPECT_EQ(_m[4], 0x12);
  VEL_MEM(f64, 9) = -1.5;
  const f64 unaligned = VEL_MEM(f64, 9);
  EXPECT_EQ(unaligned, -1.5);
  VEL_MEM(i32, 20) = -2;
  EXPECT_EQ(VEL_MEM(u8, 20), 0xFE);
}

TEST_F(DeviceMemory, NothingOutsideIsReadOrWritten) {
  const u32 end = VEL_MEMORY_BYTES;
  sbit(end * 8 - 1, 1);
  EXPECT_EQ(gbit(end * 8 - 1), 1);
  sbit(end * 8, 1);
  EXPECT_EQ(gbit(end * 8), 0);
  EXPECT_EQ(gbit(UINT32_MAX), 0);

  VEL_MEM(u32, end - 4) = 0x89ABCDEF;
  for (const u32 offset : {end - 3, end, end + 1, UINT32_MAX - 1}) {
    VEL_MEM(u32, offset) = 0xFFFFFFFF;
    const u32 outside = VEL_MEM(u32, offset);
    EXPECT_EQ(outside, 0u) << offset;
  }
  EXPECT_EQ(_m[end - 1], 0x89);
}

}  // namespace
